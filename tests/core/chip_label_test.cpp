#include "chip_label.h"

#include <gtest/gtest.h>

#include <utility>

namespace quenchly {
namespace {

TEST(ChipLabel, ABrandLosesItsDecorations)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"Apple M2 Pro", "M2 Pro"},
        {"  Apple M1\n", "M1"},
        {"Intel(R) Core(TM) i7-9750H CPU @ 2.60GHz", "Intel Core i7-9750H @ 2.60GHz"},
        {"AMD Ryzen 7 5800X 8-Core Processor", "AMD Ryzen 7 5800X 8-Core"},
        {"Apple Apple M3", "M3"},
        {"Apple", "Apple"},
        {"CPU", "CPU"},
        {"Virtual Processor Processor", "Virtual"},
        {"apple m2 cpu", "apple m2 cpu"},
    };
    for (const auto& [brand, expected] : rows)
        EXPECT_EQ(ChipLabel::normalize(brand), expected) << brand;
}

TEST(ChipLabel, ModelFamilies)
{
    const std::pair<const char*, const char*> rows[] = {
        {"Macmini9,1", "Mac mini"},
        {"MacBookPro18,3", "MacBook Pro"},
        {"MacBookAir10,1", "MacBook Air"},
        {"MacBook10,1", "MacBook"},
        {"iMacPro1,1", "iMac Pro"},
        {"iMac21,1", "iMac"},
        {"MacPro7,1", "Mac Pro"},
        {"MacStudio1,1", "Mac Studio"},
        {"Mac14,9", "Mac"},
        {"Mac", "Mac"},
        {"MACBOOKPRO", "MacBook Pro"},
        {"  Mac14,9\n", "Mac"},
        {"mac,5", "Mac"},
        {"VirtualMac2,1", "VirtualMac2,1"},
        {" ThinkPad X1 \n", "ThinkPad X1"},
        {"14,9", "14,9"},
        {"Mac Pro", "Mac Pro"},
        {"", ""},
        {" \n", ""},
    };
    for (const auto& [model, expected] : rows)
        EXPECT_EQ(ChipLabel::modelFamily(model), expected) << model;
}

TEST(ChipLabel, ChipAndFamilyMakeOneLine)
{
    EXPECT_EQ(ChipLabel::label({.brand = "Apple M2 Pro", .model = "MacBookPro18,3"}), "M2 Pro MacBook Pro");
    EXPECT_EQ(ChipLabel::label({.brand = "Apple M2 Pro", .model = ""}), "M2 Pro");
    EXPECT_EQ(ChipLabel::label({.brand = "", .model = "Mac14,9"}), "Mac");
    EXPECT_EQ(ChipLabel::label({.brand = "(R)", .model = "Mac14,9"}), "Mac");
    EXPECT_EQ(ChipLabel::label({.brand = "", .model = ""}), "");
}

}  // namespace
}  // namespace quenchly
