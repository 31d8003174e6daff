#include "decimal_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>

namespace quenchly {
namespace {

TEST(DecimalNumber, AWholeFloatingLiteralIsRead)
{
    const std::pair<const char*, double> rows[] = {
        {"0", 0},
        {"3", 3},
        {"3.5", 3.5},
        {"+3", 3},
        {"-3", -3},
        {"3.", 3},
        {".5", 0.5},
        {"-.5", -0.5},
        {"+.5e1", 5},
        {"1e5", 1e5},
        {"1E5", 1e5},
        {"1e+5", 1e5},
        {"1e-5", 1e-5},
        {"007", 7},
        {"0.1", 0.1},
        {"1e308", 1e308},
        {"123456.789", 123456.789},
        {"0e999999", 0},
        {"0.30000000000000004", 0.30000000000000004},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(decimalNumber(text), expected) << text;
}

TEST(DecimalNumber, ANegativeZeroKeepsItsSign)
{
    const auto zero = decimalNumber("-0");
    ASSERT_TRUE(zero);
    EXPECT_TRUE(std::signbit(*zero));
}

TEST(DecimalNumber, EverythingElseIsUnreadable)
{
    for (const char* text :
         {"",    " ",        "+",    "-",     ".",      "e",   "e5",    ".e5",   "1e",   "1e+",   " 3",   "3 ",
          "\t3", "3\n",      "3,5",  "1,000", "1.2.3",  "+-3", "--3",   "3-",    "0x10", "0x1p3", "nan",  "NaN",
          "inf", "infinity", "-inf", "1e999", "-1e999", "3f",  "1_000", "1e5.0", "١",    "½",     "three"})
        EXPECT_EQ(decimalNumber(text), std::nullopt) << text;
    EXPECT_EQ(decimalNumber(std::string("3\0", 2)), std::nullopt);
    EXPECT_EQ(decimalNumber(std::string(1 << 20, '9')), std::nullopt);
}

TEST(DecimalNumber, ManyDigitsBeforeAndBehindThePointAreRead)
{
    EXPECT_EQ(decimalNumber(std::string(100, '0') + "3." + std::string(100, '0') + "5"), 3.0);
    EXPECT_EQ(decimalNumber("1" + std::string(100, '0')), 1e100);
}

}  // namespace
}  // namespace quenchly
