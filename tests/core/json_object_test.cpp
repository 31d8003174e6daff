#include "json_object.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "rounding.h"

namespace quenchly {
namespace {

/// The object that every test looks into; the view refers to it.
const nlohmann::json& sample()
{
    static const nlohmann::json value = *parseJsonObject(R"({
        "text": "abc", "empty": "", "digits": "12", "true": true, "false": false, "one": 1, "two": 2, "half": 0.5,
        "big": 18446744073709551615, "null": null, "object": {"inner": 5}, "array": [1, 2],
        "objects": [{"n": 1}, {"n": 2}], "mixed": [{"n": 1}, 2], "none": []
    })");
    return value;
}

const JsonObject& object()
{
    static const JsonObject view(sample());
    return view;
}

TEST(JsonObject, StringsAreTakenFromStringsOnly)
{
    EXPECT_EQ(object().string("text"), "abc");
    EXPECT_EQ(object().string("empty"), "");
    for (const char* key : {"absent", "true", "one", "half", "null", "object", "array"})
        EXPECT_EQ(object().string(key), std::nullopt) << key;
}

TEST(JsonObject, AnEmptyStringCountsAsNoneWhereACharacterIsAskedFor)
{
    EXPECT_EQ(object().nonEmptyString("text"), "abc");
    EXPECT_EQ(object().nonEmptyString("empty"), std::nullopt);
    EXPECT_EQ(object().nonEmptyString("one"), std::nullopt);
}

TEST(JsonObject, OnlyTrueAndOneAreTrue)
{
    EXPECT_TRUE(object().boolean("true"));
    EXPECT_TRUE(object().boolean("one"));
    for (const char* key : {"absent", "false", "two", "half", "big", "null", "text", "digits", "object", "array"})
        EXPECT_FALSE(object().boolean(key)) << key;
}

TEST(JsonObject, BooleansAndStringsAreNoNumbers)
{
    for (const char* key : {"absent", "true", "false", "null", "text", "digits", "object", "array"}) {
        EXPECT_EQ(object().integer(key), std::nullopt) << key;
        EXPECT_EQ(object().number(key), std::nullopt) << key;
    }
    EXPECT_EQ(object().integer("two"), 2);
    EXPECT_EQ(object().integer("half"), 0);
    EXPECT_EQ(object().integer("big"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(object().number("two"), 2.0);
    EXPECT_EQ(object().number("half"), 0.5);
    EXPECT_EQ(object().number("big"), 18446744073709551615.0);
}

TEST(JsonObject, TolerantReadingsTakeNumericTextsToo)
{
    EXPECT_EQ(object().tolerantInteger("digits"), 12);
    EXPECT_EQ(object().tolerantInteger("two"), 2);
    EXPECT_EQ(object().tolerantNumber("digits"), 12.0);
    EXPECT_EQ(object().tolerantNumber("half"), 0.5);
    for (const char* key : {"absent", "true", "false", "null", "text", "empty", "object", "array"}) {
        EXPECT_EQ(object().tolerantInteger(key), std::nullopt) << key;
        EXPECT_EQ(object().tolerantNumber(key), std::nullopt) << key;
    }
}

TEST(JsonObject, ObjectsAreTakenFromObjectsOnly)
{
    const auto inner = object().object("object");
    ASSERT_TRUE(inner);
    EXPECT_EQ(inner->integer("inner"), 5);
    for (const char* key : {"absent", "array", "text", "null", "one"})
        EXPECT_FALSE(object().object(key)) << key;
}

TEST(JsonObject, AListOfObjectsIsEmptyUnlessAllElementsAreObjects)
{
    const auto elements = object().objects("objects");
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[0].integer("n"), 1);
    EXPECT_EQ(elements[1].integer("n"), 2);
    for (const char* key : {"absent", "mixed", "none", "array", "object", "text", "null"})
        EXPECT_TRUE(object().objects(key).empty()) << key;
}

TEST(JsonObject, OnlyATextWhoseTopLevelIsAnObjectIsParsed)
{
    EXPECT_TRUE(parseJsonObject("{}"));
    for (const std::string_view text : {"", "[]", "1", "null", "\"{}\"", "{", "{}{}", "nonsense"})
        EXPECT_FALSE(parseJsonObject(text)) << text;
    EXPECT_FALSE(parseJsonObject(std::string_view("{}\0", 3)));
}

TEST(Rounding, FractionsAreCutOffTowardZeroAndClamped)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, std::int64_t> rows[] = {
        {0.9, 0},
        {-0.9, 0},
        {7.9, 7},
        {-7.9, -7},
        {9223372036854774784.0, 9223372036854774784},  // the last double below 2^63
        {9223372036854775808.0, std::numeric_limits<std::int64_t>::max()},
        {-9223372036854775808.0, std::numeric_limits<std::int64_t>::min()},
        {-9223372036854777856.0, std::numeric_limits<std::int64_t>::min()},
        {infinity, std::numeric_limits<std::int64_t>::max()},
        {-infinity, std::numeric_limits<std::int64_t>::min()},
        {std::numeric_limits<double>::quiet_NaN(), 0},
    };
    for (const auto& [value, expected] : rows)
        EXPECT_EQ(clampedInteger(value), expected) << value;
}

TEST(Rounding, HalvesGoAwayFromZero)
{
    const std::pair<double, std::int64_t> rows[] = {{0.5, 1},
                                                    {1.5, 2},
                                                    {2.5, 3},
                                                    {2.4999, 2},
                                                    {-0.5, -1},
                                                    {-2.5, -3},
                                                    {-0.4, 0},
                                                    {0.49999999999999994, 0},
                                                    {1e300, std::numeric_limits<std::int64_t>::max()}};
    for (const auto& [value, expected] : rows)
        EXPECT_EQ(roundedInteger(value), expected) << value;
}

TEST(ParseJsonObject, BracketsBeyondReasonAreRefusedBeforeTheyAreParsed)
{
    const auto nested = [](std::size_t depth) {
        return "{\"a\":" + std::string(depth, '[') + std::string(depth, ']') + "}";
    };
    EXPECT_TRUE(parseJsonObject(nested(199'999)));
    EXPECT_FALSE(parseJsonObject(nested(200'000)));
    EXPECT_FALSE(parseJsonObject(std::string(8'000'000, '[')));
}

TEST(ParseJsonObject, BracketsWithinStringsAreNoNesting)
{
    EXPECT_TRUE(parseJsonObject("{\"a\":\"" + std::string(300'000, '[') + "\"}"));
    EXPECT_TRUE(parseJsonObject("{\"a\":\"\\\"" + std::string(300'000, '[') + "\"}"));
}

}  // namespace
}  // namespace quenchly
