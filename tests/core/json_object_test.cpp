#include "json_object.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "rounding.h"

namespace quenchly {
namespace {

using CheckerContract::Key;

// The keys of the object that every test looks into, by what is under them.
constexpr Key absent = "mode";
constexpr Key words = "text";
constexpr Key empty = "id";
constexpr Key digits = "reason";
constexpr Key yes = "hot";
constexpr Key no = "dryRun";
constexpr Key one = "load1";
constexpr Key two = "level";
constexpr Key half = "pid";
constexpr Key big = "swapPct";
constexpr Key nothing = "kind";
constexpr Key inside = "story";
constexpr Key array = "cmd";
constexpr Key objects = "targets";
constexpr Key mixed = "paused";
constexpr Key none = "quarantined";
constexpr Key number = "coolStreak";

/// The view refers to it.
const nlohmann::json& sample()
{
    static const nlohmann::json value = *parseJsonObject(R"({
        "text": "abc", "id": "", "reason": "12", "hot": true, "dryRun": false, "load1": 1, "level": 2, "pid": 0.5,
        "swapPct": 18446744073709551615, "kind": null, "story": {"coolStreak": 5}, "cmd": [1, 2],
        "targets": [{"coolStreak": 1}, {"coolStreak": 2}], "paused": [{"coolStreak": 1}, 2], "quarantined": []
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
    EXPECT_EQ(object().string(words), "abc");
    EXPECT_EQ(object().string(empty), "");
    for (const Key key : {absent, yes, one, half, nothing, inside, array})
        EXPECT_EQ(object().string(key), std::nullopt) << key.name();
}

TEST(JsonObject, AnEmptyStringCountsAsNoneWhereACharacterIsAskedFor)
{
    EXPECT_EQ(object().nonEmptyString(words), "abc");
    EXPECT_EQ(object().nonEmptyString(empty), std::nullopt);
    EXPECT_EQ(object().nonEmptyString(one), std::nullopt);
}

TEST(JsonObject, OnlyTrueAndOneAreTrue)
{
    EXPECT_TRUE(object().boolean(yes));
    EXPECT_TRUE(object().boolean(one));
    for (const Key key : {absent, no, two, half, big, nothing, words, digits, inside, array})
        EXPECT_FALSE(object().boolean(key)) << key.name();
}

TEST(JsonObject, BooleansAndStringsAreNoNumbers)
{
    for (const Key key : {absent, yes, no, nothing, words, digits, inside, array}) {
        EXPECT_EQ(object().integer(key), std::nullopt) << key.name();
        EXPECT_EQ(object().number(key), std::nullopt) << key.name();
    }
    EXPECT_EQ(object().integer(two), 2);
    EXPECT_EQ(object().integer(half), 0);
    EXPECT_EQ(object().integer(big), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(object().number(two), 2.0);
    EXPECT_EQ(object().number(half), 0.5);
    EXPECT_EQ(object().number(big), 18446744073709551615.0);
}

TEST(JsonObject, TolerantReadingsTakeNumericTextsToo)
{
    EXPECT_EQ(object().tolerantInteger(digits), 12);
    EXPECT_EQ(object().tolerantInteger(two), 2);
    EXPECT_EQ(object().tolerantNumber(digits), 12.0);
    EXPECT_EQ(object().tolerantNumber(half), 0.5);
    for (const Key key : {absent, yes, no, nothing, words, empty, inside, array}) {
        EXPECT_EQ(object().tolerantInteger(key), std::nullopt) << key.name();
        EXPECT_EQ(object().tolerantNumber(key), std::nullopt) << key.name();
    }
}

TEST(JsonObject, ObjectsAreTakenFromObjectsOnly)
{
    const auto inner = object().object(inside);
    ASSERT_TRUE(inner);
    EXPECT_EQ(inner->integer(number), 5);
    for (const Key key : {absent, array, words, nothing, one})
        EXPECT_FALSE(object().object(key)) << key.name();
}

TEST(JsonObject, AListOfObjectsIsEmptyUnlessAllElementsAreObjects)
{
    const auto elements = object().objects(objects);
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(elements[0].integer(number), 1);
    EXPECT_EQ(elements[1].integer(number), 2);
    for (const Key key : {absent, mixed, none, array, inside, words, nothing})
        EXPECT_TRUE(object().objects(key).empty()) << key.name();
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
