#include "heat_state.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json_object.h"
#include "test_files.h"

namespace quenchly {
namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

/// One state in which every key holds something other than its default.
constexpr std::string_view fullState = R"({
    "lastCheck": "2025-03-02T10:15:00.120Z",
    "thermalTruth": "false-heat",
    "hot": true,
    "coolStreak": 4,
    "hotStreak": 2,
    "lastHotAt": "2025-03-02T10:09:00Z",
    "lastCoolAt": "2025-03-02T10:14:00Z",
    "lastRestoreAt": "2025-03-02T09:00:00Z",
    "paused": [
        {"label": "Ollama", "pid": 812, "pausedAt": "2025-03-02T10:10:00Z", "reason": "load 9.4 on 8"},
        {"label": "MLX", "pid": 4000000000}
    ],
    "quarantined": [
        {"id": "q1", "kind": "launchd", "cmd": "com.example.ollama", "quarantinedAt": "2025-03-02T08:00:00Z",
         "reason": "loops", "acknowledged": true}
    ],
    "updatedAt": "2025-03-02T10:15:01Z",
    "story": {"text": "Using extra memory on disk. Work is progressing.", "tone": "protect"},
    "spectrumClass": "trend",
    "lastMetrics": {"load1": 9.4, "cpuCount": 8, "swapPct": 31.6, "swapUsedMB": 2150, "swapCritical": true},
    "slowActive": true,
    "memoryReliefTip": "Unload a model.",
    "aKeyOfALaterVersion": {"nested": [1, 2, 3]}
})";

std::string object(std::string_view key, std::string_view value)
{
    return "{\"" + std::string(key) + "\":" + std::string(value) + "}";
}

std::optional<LastMetrics> metricsOf(std::string_view json)
{
    const auto state = HeatState::parse(object("lastMetrics", json));
    return state ? state->lastMetrics : std::nullopt;
}

TEST(HeatState, EveryKeyOfAFullFileIsRead)
{
    const auto state = HeatState::parse(fullState);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->lastCheck, "2025-03-02T10:15:00.120Z");
    EXPECT_EQ(state->thermalTruth, "false-heat");
    EXPECT_TRUE(state->hot);
    EXPECT_EQ(state->coolStreak, 4);
    EXPECT_EQ(state->hotStreak, 2);
    EXPECT_EQ(state->lastHotAt, "2025-03-02T10:09:00Z");
    EXPECT_EQ(state->lastCoolAt, "2025-03-02T10:14:00Z");
    EXPECT_EQ(state->lastRestoreAt, "2025-03-02T09:00:00Z");
    ASSERT_EQ(state->paused.size(), 2u);
    EXPECT_EQ(state->paused[0].label, "Ollama");
    EXPECT_EQ(state->paused[0].pid, 812);
    EXPECT_EQ(state->paused[0].pausedAt, "2025-03-02T10:10:00Z");
    EXPECT_EQ(state->paused[0].reason, "load 9.4 on 8");
    EXPECT_EQ(state->paused[1].label, "MLX");
    EXPECT_EQ(state->paused[1].pid, 4'000'000'000);
    ASSERT_EQ(state->quarantined.size(), 1u);
    EXPECT_EQ(state->quarantined[0].id, "q1");
    EXPECT_EQ(state->quarantined[0].kind, "launchd");
    EXPECT_EQ(state->quarantined[0].cmd, "com.example.ollama");
    EXPECT_EQ(state->quarantined[0].quarantinedAt, "2025-03-02T08:00:00Z");
    EXPECT_EQ(state->quarantined[0].reason, "loops");
    EXPECT_TRUE(state->quarantined[0].acknowledged);
    EXPECT_EQ(state->updatedAt, "2025-03-02T10:15:01Z");
    ASSERT_TRUE(state->story);
    EXPECT_EQ(state->story->text, "Using extra memory on disk. Work is progressing.");
    EXPECT_EQ(state->story->tone, QuenchTone::protect);
    EXPECT_EQ(state->spectrumClass, SpectrumClass::trend);
    ASSERT_TRUE(state->lastMetrics);
    EXPECT_EQ(state->lastMetrics->load1, 9.4);
    EXPECT_EQ(state->lastMetrics->cpuCount, 8);
    EXPECT_EQ(state->lastMetrics->cpuLoadPct, 100);
    EXPECT_EQ(state->lastMetrics->swapPct, 31.6);
    EXPECT_EQ(state->lastMetrics->swapUsedMB, 2150.0);
    EXPECT_TRUE(state->lastMetrics->swapCritical);
    EXPECT_EQ(state->lastMetrics->menubarLine, "load 100% · swap 2.1 GB (32%)");
    EXPECT_TRUE(state->slowActive);
    EXPECT_EQ(state->memoryReliefTip, "Unload a model.");
}

TEST(HeatState, AnEmptyObjectHasEveryDefault)
{
    const auto state = HeatState::parse("{}");
    ASSERT_TRUE(state);
    EXPECT_EQ(state->thermalTruth, "cool");
    EXPECT_FALSE(state->hot);
    EXPECT_EQ(state->coolStreak, 0);
    EXPECT_EQ(state->hotStreak, 0);
    EXPECT_TRUE(state->paused.empty());
    EXPECT_TRUE(state->quarantined.empty());
    EXPECT_FALSE(state->slowActive);
    for (const auto& text : {state->lastCheck, state->lastHotAt, state->lastCoolAt, state->lastRestoreAt,
                             state->updatedAt, state->memoryReliefTip})
        EXPECT_EQ(text, std::nullopt);
    EXPECT_EQ(state->story, std::nullopt);
    EXPECT_EQ(state->spectrumClass, std::nullopt);
    EXPECT_EQ(state->lastMetrics, std::nullopt);
    EXPECT_EQ(*state, HeatState());
}

TEST(HeatState, AnObjectDecodedElsewhereGivesTheSameState)
{
    const auto object = parseJsonObject(fullState);
    ASSERT_TRUE(object);
    EXPECT_EQ(HeatState::parse(JsonObject(*object)), HeatState::parse(fullState));
}

TEST(HeatState, ATextThatIsNoJsonObjectGivesNoState)
{
    using namespace std::string_view_literals;
    const std::string_view texts[] = {
        "",
        " ",
        "\n",
        "[]",
        "[{}]",
        "null",
        "true",
        "12",
        "\"{}\"",
        "{",
        "}",
        "{}}",
        "{} {}",
        "{}x",
        "x{}",
        "{,}",
        "{\"hot\":true,}",
        "{\"hot\"}",
        "{hot:true}",
        "{'hot':true}",
        "{\"hot\":True}",
        "{\"hot\":tru}",
        "{\"coolStreak\":01}",
        "{\"coolStreak\":+1}",
        "{\"coolStreak\":1.}",
        "{\"coolStreak\":.5}",
        "{\"coolStreak\":0x10}",
        "{\"coolStreak\":NaN}",
        "{\"coolStreak\":Infinity}",
        "{\"coolStreak\":-}",
        "{\"coolStreak\":1e}",
        "{\"hot\":true /* comment */}",
        "{\"hot\":true} // comment",
        "{\"thermalTruth\":\"line\nend\"}",
        "{\"thermalTruth\":\"\\x41\"}",
        "{\"thermalTruth\":\"\\ud800\"}",
        "{\"thermalTruth\":\"\\udc00\\ud800\"}",
        "{}\0"sv,
        "{\"hot\":true}\0\0\0\0"sv,
        "{}\0{}"sv,
        "\0{}"sv,
        "{\"thermalTruth\":\"a\0b\"}"sv,
    };
    for (const std::string_view text : texts)
        EXPECT_EQ(HeatState::parse(text), std::nullopt) << text;
}

TEST(HeatState, AFileCutOffAnywhereGivesNoState)
{
    for (std::size_t length = 0; length < fullState.size(); ++length)
        ASSERT_EQ(HeatState::parse(fullState.substr(0, length)), std::nullopt) << "cut off after " << length;
    EXPECT_TRUE(HeatState::parse(fullState));
}

TEST(HeatState, InvalidUtf8AnywhereGivesNoState)
{
    const std::string_view invalid[] = {
        "\x80",              // a continuation byte alone
        "\xC3",              // a sequence without its end
        "\xC0\xAF",          // overlong
        "\xE0\x80\xAF",      // overlong
        "\xED\xA0\x80",      // a surrogate
        "\xF4\x90\x80\x80",  // beyond Unicode
        "\xF8\x88\x80\x80\x80",
        "\xFE",
        "\xFF",
    };
    for (const std::string_view bytes : invalid) {
        const std::string text = "a" + std::string(bytes) + "b";
        EXPECT_EQ(HeatState::parse("{\"thermalTruth\":\"" + text + "\"}"), std::nullopt)
            << ::testing::PrintToString(bytes);
        EXPECT_EQ(HeatState::parse("{\"" + text + "\":1}"), std::nullopt) << ::testing::PrintToString(bytes);
        EXPECT_EQ(HeatState::parse("{}" + std::string(bytes)), std::nullopt) << ::testing::PrintToString(bytes);
    }
}

TEST(HeatState, WhiteSpaceAroundTheObjectDoesNotMatter)
{
    EXPECT_EQ(HeatState::parse(" \t\r\n" + std::string(fullState) + "\n\n"), HeatState::parse(fullState));
}

struct WrongValues {
    std::string_view key;
    std::vector<std::string_view> values;
};

const std::vector<std::string_view> noText{"null", "true", "false", "0", "12", "-3.5", "[]", "[\"text\"]", "{}"};
const std::vector<std::string_view> noTextAndEmpty{"null", "true", "0", "12", "-3.5", "[]", "[\"text\"]", "{}", "\"\""};
const std::vector<std::string_view> noTruth{"null", "false", "0",     "0.0",      "2",  "-1",     "0.5",
                                            "1e19", "\"\"",  "\"1\"", "\"true\"", "[]", "[true]", "{}"};
const std::vector<std::string_view> noInteger{"null",
                                              "true",
                                              "false",
                                              "[]",
                                              "[1]",
                                              "{}",
                                              "\"\"",
                                              "\"+\"",
                                              "\"-\"",
                                              "\" 12\"",
                                              "\"12 \"",
                                              "\"12a\"",
                                              "\"1.0\"",
                                              "\"1e5\"",
                                              "\"0x10\"",
                                              "\"nan\"",
                                              "\"+-1\"",
                                              "\"-+1\"",
                                              "\"--1\"",
                                              "\"1,000\"",
                                              "\"١٢\"",
                                              "\"9223372036854775808\"",
                                              "\"-9223372036854775809\"",
                                              "\"18446744073709551616\""};
const std::vector<std::string_view> noNumber{
    "null",      "true",    "false",     "[]",           "[1]",      "{}",      "\"\"",
    "\"+\"",     "\".\"",   "\" 3\"",    "\"3 \"",       "\"3\\n\"", "\"3,5\"", "\"0x10\"",
    "\"nan\"",   "\"inf\"", "\"-inf\"",  "\"infinity\"", "\"1e\"",   "\"e5\"",  "\"1e+\"",
    "\"1.2.3\"", "\"+-1\"", "\"1e999\"", "\"-1e999\"",   "\"3f\"",   "\"٣\"",   "\"3\\u0000\""};

TEST(HeatState, AWrongValueUnderOneKeyIsThatKeysDefaultAndNothingElse)
{
    const WrongValues rows[] = {
        {"lastCheck", noTextAndEmpty},
        {"thermalTruth", noTextAndEmpty},
        {"hot", noTruth},
        {"coolStreak", noInteger},
        {"hotStreak", noInteger},
        {"lastHotAt", noTextAndEmpty},
        {"lastCoolAt", noTextAndEmpty},
        {"lastRestoreAt", noTextAndEmpty},
        {"paused", {"null", "true", "1", "\"A\"", "{}", "{\"label\":\"A\"}", "[1]", "[\"A\"]", "[null]", "[[]]"}},
        {"quarantined", {"null", "true", "1", "\"A\"", "{}", "{\"id\":\"A\"}", "[1]", "[\"A\"]", "[null]", "[[]]"}},
        {"updatedAt", noTextAndEmpty},
        {"story", {"null", "true", "1", "\"text\"", "[]", "[{\"text\":\"A\"}]", "{}", "{\"tone\":\"cool\"}"}},
        {"spectrumClass",
         {"null", "true", "0", "1", "\"\"", "\"Loop\"", "\"LOOP\"", "\" loop\"", "\"loops\"", "[\"loop\"]", "{}"}},
        {"lastMetrics", {"null", "true", "1", "9.4", "\"load1\"", "[]", "[{\"load1\":1}]", "{}", "{\"cpuCount\":8}"}},
        {"slowActive", noTruth},
        {"memoryReliefTip", noTextAndEmpty},
    };
    for (const WrongValues& row : rows) {
        for (const std::string_view value : row.values) {
            const std::string alone = object(row.key, value);
            EXPECT_EQ(HeatState::parse(alone), HeatState()) << alone;
            nlohmann::json full = *parseJsonObject(fullState);
            full[std::string(row.key)] = nlohmann::json::parse(value);
            const HeatState withWrongValue = HeatState::parse(JsonObject(full));
            full.erase(std::string(row.key));
            EXPECT_EQ(withWrongValue, HeatState::parse(JsonObject(full))) << alone;
        }
    }
}

TEST(HeatState, AWrongValueInAHeldTargetIsThatFieldsDefault)
{
    const WrongValues rows[] = {
        {"pid", {"null", "true", "false", "\"812\"", "\"\"", "[]", "[812]", "{}"}},
        {"pausedAt", noText},
        {"reason", noText},
    };
    for (const WrongValues& row : rows) {
        for (const std::string_view value : row.values) {
            const auto state =
                HeatState::parse(R"({"paused":[{"label":"A",)" + object(row.key, value).substr(1) + "]}");
            ASSERT_TRUE(state) << row.key << value;
            ASSERT_EQ(state->paused.size(), 1u) << row.key << value;
            EXPECT_EQ(state->paused[0], PausedEntry{.label = "A"}) << row.key << value;
        }
    }
}

TEST(HeatState, AWrongValueInASetAsideEntryIsThatFieldsDefault)
{
    const WrongValues rows[] = {
        {"kind", noText}, {"cmd", noText}, {"quarantinedAt", noText}, {"reason", noText}, {"acknowledged", noTruth},
    };
    const QuarantinedEntry onlyId{.id = "A"};
    EXPECT_EQ(onlyId.kind, "process");
    for (const WrongValues& row : rows) {
        for (const std::string_view value : row.values) {
            const auto state =
                HeatState::parse(R"({"quarantined":[{"id":"A",)" + object(row.key, value).substr(1) + "]}");
            ASSERT_TRUE(state) << row.key << value;
            ASSERT_EQ(state->quarantined.size(), 1u) << row.key << value;
            EXPECT_EQ(state->quarantined[0], onlyId) << row.key << value;
        }
    }
}

TEST(HeatState, AWrongValueInTheMetricsIsThatFieldsDefault)
{
    const WrongValues rows[] = {
        {"swapPct", noNumber},     {"swapUsedMB", noNumber},  {"cpuCount", noInteger},
        {"cpuLoadPct", noInteger}, {"swapCritical", noTruth}, {"menubarLine", noTextAndEmpty},
    };
    const auto onlyLoad = metricsOf(R"({"load1":0.5})");
    ASSERT_TRUE(onlyLoad);
    for (const WrongValues& row : rows)
        for (const std::string_view value : row.values)
            EXPECT_EQ(metricsOf(R"({"load1":0.5,)" + object(row.key, value).substr(1)), onlyLoad) << row.key << value;
}

TEST(HeatState, MetricsWithoutAReadableLoadAreNone)
{
    EXPECT_EQ(metricsOf(R"({"cpuCount":8,"swapPct":10,"menubarLine":"load 1%"})"), std::nullopt);
    for (const std::string_view value : noNumber)
        EXPECT_EQ(metricsOf(R"({"cpuCount":8,)" + object("load1", value).substr(1)), std::nullopt) << value;
}

TEST(HeatState, AHeldTargetWithoutALabelIsSkipped)
{
    for (const std::string_view value : noText) {
        const auto state = HeatState::parse(R"({"paused":[{"label":"A"},)" + object("label", value) + "]}");
        ASSERT_TRUE(state) << value;
        EXPECT_EQ(state->paused, std::vector{PausedEntry{.label = "A"}}) << value;
    }
    const auto state = HeatState::parse(R"({"paused":[{"pid":3},{"label":"B"},{},{"label":""},{"label":"A"}]})");
    ASSERT_TRUE(state);
    EXPECT_EQ(state->paused,
              (std::vector{PausedEntry{.label = "B"}, PausedEntry{.label = ""}, PausedEntry{.label = "A"}}));
}

TEST(HeatState, ASetAsideEntryWithoutAnIdIsSkipped)
{
    for (const std::string_view value : noText) {
        const auto state = HeatState::parse(R"({"quarantined":[)" + object("id", value) + R"(,{"id":"A"}]})");
        ASSERT_TRUE(state) << value;
        EXPECT_EQ(state->quarantined, std::vector{QuarantinedEntry{.id = "A"}}) << value;
    }
    const auto state = HeatState::parse(R"({"quarantined":[{"cmd":"ollama"},{"id":"B"},{},{"id":""},{"id":"A"}]})");
    ASSERT_TRUE(state);
    EXPECT_EQ(state->quarantined,
              (std::vector{QuarantinedEntry{.id = "B"}, QuarantinedEntry{.id = ""}, QuarantinedEntry{.id = "A"}}));
}

TEST(HeatState, OneElementThatIsNoObjectEmptiesTheWholeList)
{
    for (const std::string_view stranger : {"5", "null", "true", "\"A\"", "[]", "[{\"label\":\"A\",\"id\":\"A\"}]"}) {
        for (const char* key : {"paused", "quarantined"}) {
            const std::string good = R"({"label":"A","id":"A"})";
            const std::string behind = object(key, "[" + good + "," + std::string(stranger) + "]");
            const std::string before = object(key, "[" + std::string(stranger) + "," + good + "]");
            EXPECT_EQ(HeatState::parse(behind), HeatState()) << behind;
            EXPECT_EQ(HeatState::parse(before), HeatState()) << before;
        }
    }
}

TEST(HeatState, TheTwoListsAreReadIndependently)
{
    const auto state = HeatState::parse(R"({"paused":[5],"quarantined":[{"id":"A"}]})");
    ASSERT_TRUE(state);
    EXPECT_TRUE(state->paused.empty());
    EXPECT_EQ(state->quarantined.size(), 1u);
}

TEST(HeatState, AStoryNeedsATextAndAnUnknownToneIsWatch)
{
    const struct {
        std::string_view story;
        std::optional<VerdictStory> expected;
    } rows[] = {
        {R"({"text":"A","tone":"cool"})", VerdictStory{"A", QuenchTone::cool}},
        {R"({"text":"A","tone":"protect"})", VerdictStory{"A", QuenchTone::protect}},
        {R"({"text":"A","tone":"watch"})", VerdictStory{"A", QuenchTone::watch}},
        {R"({"text":"A"})", VerdictStory{"A", QuenchTone::watch}},
        {R"({"text":"A","tone":"Cool"})", VerdictStory{"A", QuenchTone::watch}},
        {R"({"text":"A","tone":""})", VerdictStory{"A", QuenchTone::watch}},
        {R"({"text":"A","tone":0})", VerdictStory{"A", QuenchTone::watch}},
        {R"({"text":"A","tone":null})", VerdictStory{"A", QuenchTone::watch}},
        {R"({"text":"A","tone":["cool"]})", VerdictStory{"A", QuenchTone::watch}},
        {R"({"text":"","tone":"cool"})", VerdictStory{"", QuenchTone::cool}},
        {R"({"text":5,"tone":"cool"})", std::nullopt},
        {R"({"text":null,"tone":"cool"})", std::nullopt},
        {R"({"text":["A"],"tone":"cool"})", std::nullopt},
        {R"({"tone":"cool"})", std::nullopt},
    };
    for (const auto& row : rows) {
        const auto state = HeatState::parse(object("story", row.story));
        ASSERT_TRUE(state) << row.story;
        EXPECT_EQ(state->story, row.expected) << row.story;
    }
}

TEST(HeatState, TheSpectrumClassMatchesItsRawTextExactly)
{
    const std::pair<std::string_view, SpectrumClass> rows[] = {{"\"loop\"", SpectrumClass::loop},
                                                               {"\"trend\"", SpectrumClass::trend},
                                                               {"\"flat\"", SpectrumClass::flat},
                                                               {"\"insufficient\"", SpectrumClass::insufficient}};
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(HeatState::parse(object("spectrumClass", text))->spectrumClass, expected) << text;
}

TEST(HeatState, EnumerationsAreBuiltFromAndGiveBackTheirRawTexts)
{
    const std::pair<std::string_view, QuenchTone> tones[] = {
        {"cool", QuenchTone::cool}, {"protect", QuenchTone::protect}, {"watch", QuenchTone::watch}};
    for (const auto& [text, tone] : tones) {
        EXPECT_EQ(rawValue(tone), text);
        EXPECT_EQ(fromRawValue<QuenchTone>(text), tone);
    }
    const std::pair<std::string_view, SpectrumClass> classes[] = {{"loop", SpectrumClass::loop},
                                                                  {"trend", SpectrumClass::trend},
                                                                  {"flat", SpectrumClass::flat},
                                                                  {"insufficient", SpectrumClass::insufficient}};
    for (const auto& [text, spectrum] : classes) {
        EXPECT_EQ(rawValue(spectrum), text);
        EXPECT_EQ(fromRawValue<SpectrumClass>(text), spectrum);
    }
    for (const std::string_view text : {"", "Cool", "stale", "cool "}) {
        EXPECT_EQ(fromRawValue<QuenchTone>(text), std::nullopt) << text;
        EXPECT_EQ(fromRawValue<SpectrumClass>(text), std::nullopt) << text;
    }
}

TEST(HeatState, StreaksAreReadFromNumbersAndNumericTexts)
{
    const std::pair<std::string_view, std::int64_t> rows[] = {
        {"12", 12},
        {"-3", -3},
        {"-0", 0},
        {"7.9", 7},
        {"-7.9", -7},
        {"0.999", 0},
        {"-0.4", 0},
        {"1e3", 1000},
        {"1E-3", 0},
        {"9223372036854775807", most},
        {"-9223372036854775808", least},
        {"9223372036854775808", most},
        {"18446744073709551615", most},
        {"18446744073709551616", most},
        {"-9223372036854775809", least},
        {"-18446744073709551616", least},
        {"1e19", most},
        {"-1e19", least},
        {"1e308", most},
        {"-1e308", least},
        {"1e-400", 0},
        {"\"12\"", 12},
        {"\"+12\"", 12},
        {"\"-3\"", -3},
        {"\"0\"", 0},
        {"\"-0\"", 0},
        {"\"007\"", 7},
        {"\"9223372036854775807\"", most},
        {"\"+9223372036854775807\"", most},
        {"\"-9223372036854775808\"", least},
    };
    for (const auto& [value, expected] : rows) {
        for (const char* key : {"coolStreak", "hotStreak"}) {
            const auto state = HeatState::parse(object(key, value));
            ASSERT_TRUE(state) << value;
            EXPECT_EQ(std::string_view(key) == "coolStreak" ? state->coolStreak : state->hotStreak, expected) << value;
            EXPECT_EQ(std::string_view(key) == "coolStreak" ? state->hotStreak : state->coolStreak, 0) << value;
        }
    }
}

TEST(HeatState, AProcessIdIsReadFromNumbersOnly)
{
    const std::pair<std::string_view, std::int64_t> rows[] = {
        {"812", 812},     {"812.9", 812}, {"-1.5", -1}, {"-0.4", 0},     {"1e3", 1000}, {"9223372036854775808", most},
        {"-1e19", least}, {"\"812\"", 0}, {"true", 0},  {"\"+812\"", 0}, {"null", 0},
    };
    for (const auto& [value, expected] : rows) {
        const auto state = HeatState::parse(R"({"paused":[{"label":"A",)" + object("pid", value).substr(1) + "]}");
        ASSERT_TRUE(state && state->paused.size() == 1) << value;
        EXPECT_EQ(state->paused[0].pid, expected) << value;
    }
}

TEST(HeatState, BooleansAreReadFromTrueAndFromTheNumberOne)
{
    for (const std::string_view value : {"true", "1", "1.0", "1e0"}) {
        EXPECT_TRUE(HeatState::parse(object("hot", value))->hot) << value;
        EXPECT_TRUE(HeatState::parse(object("slowActive", value))->slowActive) << value;
        EXPECT_TRUE(metricsOf(R"({"load1":1,)" + object("swapCritical", value).substr(1))->swapCritical) << value;
        EXPECT_TRUE(HeatState::parse(R"({"quarantined":[{"id":"A",)" + object("acknowledged", value).substr(1) + "]}")
                        ->quarantined.at(0)
                        .acknowledged)
            << value;
    }
}

TEST(HeatState, FiguresOfTheMetricsAreReadFromNumbersAndNumericTexts)
{
    const std::pair<std::string_view, double> rows[] = {
        {"3", 3},
        {"3.5", 3.5},
        {"-0.4", -0.4},
        {"1e5", 1e5},
        {"1e308", 1e308},
        {"9223372036854775808", 9223372036854775808.0},
        {"18446744073709551616", 18446744073709551616.0},
        {"\"3\"", 3},
        {"\"3.5\"", 3.5},
        {"\"+3\"", 3},
        {"\"-3.25\"", -3.25},
        {"\"3.\"", 3},
        {"\".5\"", 0.5},
        {"\"-.5\"", -0.5},
        {"\"1e5\"", 1e5},
        {"\"1E+2\"", 100},
        {"\"25e-1\"", 2.5},
        {"\"1.e2\"", 100},
        {"\"18446744073709551616\"", 18446744073709551616.0},
    };
    for (const auto& [value, expected] : rows) {
        const auto load = metricsOf(object("load1", value));
        ASSERT_TRUE(load) << value;
        EXPECT_EQ(load->load1, expected) << value;
        EXPECT_EQ(metricsOf(R"({"load1":1,)" + object("swapPct", value).substr(1))->swapPct, expected) << value;
        EXPECT_EQ(metricsOf(R"({"load1":1,)" + object("swapUsedMB", value).substr(1))->swapUsedMB, expected) << value;
    }
}

TEST(HeatState, ANumberThatNoDoubleHoldsIsNoReadableJson)
{
    EXPECT_EQ(HeatState::parse(R"({"lastMetrics":{"load1":1e999}})"), std::nullopt);
    EXPECT_EQ(HeatState::parse(R"({"lastMetrics":{"load1":-1e999}})"), std::nullopt);
}

TEST(HeatState, TheLoadPercentIsComputedWhereTheFileGivesNone)
{
    const std::pair<std::string_view, std::int64_t> rows[] = {
        {R"({"load1":1.0,"cpuCount":4})", 25},
        {R"({"load1":0.96,"cpuCount":8})", 12},
        {R"({"load1":9.4,"cpuCount":8})", 100},  // 117.5 capped
        {R"({"load1":0.5,"cpuCount":0})", 50},   // divided by 1
        {R"({"load1":0.5,"cpuCount":1})", 50},
        {R"({"load1":0.5,"cpuCount":-8})", 50},
        {R"({"load1":0.5})", 50},
        {R"({"load1":"3.5"})", 100},
        {R"({"load1":1,"cpuCount":8})", 13},  // 12.5, away from zero
        {R"({"load1":-1,"cpuCount":8})", -13},
        {R"({"load1":-50,"cpuCount":1})", -5000},  // no lower limit
        {R"({"load1":1e308,"cpuCount":1})", 100},
        {R"({"load1":-1e308,"cpuCount":1})", least},
        {R"({"load1":1e300,"cpuCount":9223372036854775807})", 100},
        {R"({"load1":1,"cpuCount":"4"})", 25},
        {R"({"load1":1,"cpuCount":4.9})", 25},
        {R"({"load1":1,"cpuCount":4,"cpuLoadPct":250})", 250},  // taken as it is
        {R"({"load1":1,"cpuCount":4,"cpuLoadPct":-7})", -7},
        {R"({"load1":1,"cpuCount":4,"cpuLoadPct":"42"})", 42},
        {R"({"load1":1,"cpuCount":4,"cpuLoadPct":42.9})", 42},
        {R"({"load1":1,"cpuCount":4,"cpuLoadPct":1e300})", most},
        {R"({"load1":1,"cpuCount":4,"cpuLoadPct":"many"})", 25},
    };
    for (const auto& [json, expected] : rows) {
        const auto metrics = metricsOf(json);
        ASSERT_TRUE(metrics) << json;
        EXPECT_EQ(metrics->cpuLoadPct, expected) << json;
    }
}

TEST(HeatState, TheMenubarLineIsBuiltWhereTheFileGivesNone)
{
    const std::pair<std::string_view, std::string_view> rows[] = {
        {R"({"load1":9.4,"cpuCount":8,"swapPct":31.6,"swapUsedMB":2150})", "load 100% · swap 2.1 GB (32%)"},
        {R"({"load1":0.96,"cpuCount":8})", "load 12% · swap n/a"},
        {R"({"load1":0.96,"cpuCount":8,"swapUsedMB":512})", "load 12% · swap 512 MB"},
        {R"({"load1":0.96,"cpuCount":8,"swapPct":31.5})", "load 12% · swap 32%"},
        {R"({"load1":0.96,"cpuCount":8,"swapPct":31.5,"swapUsedMB":-1})", "load 12% · swap 32%"},
        {R"({"load1":0.96,"cpuCount":8,"swapUsedMB":-1})", "load 12% · swap n/a"},
        {R"({"load1":"3.5"})", "load 100% · swap n/a"},
        {R"({"load1":1,"cpuLoadPct":250})", "load 250% · swap n/a"},
        {R"({"load1":0,"swapPct":-0.4,"swapUsedMB":0})", "load 0% · swap 0 MB (0%)"},
        {R"({"load1":-0.004,"swapPct":0.4})", "load 0% · swap 0%"},
        {R"({"load1":0,"menubarLine":""})", "load 0% · swap n/a"},
        {R"({"load1":0,"menubarLine":" "})", " "},
        {R"({"load1":0,"menubarLine":"as given"})", "as given"},
    };
    for (const auto& [json, expected] : rows) {
        const auto metrics = metricsOf(json);
        ASSERT_TRUE(metrics) << json;
        EXPECT_EQ(metrics->menubarLine, expected) << json;
    }
}

TEST(HeatState, TextsKeepMarkupControlsAndMarksAsTheyAre)
{
    const std::pair<std::string_view, std::string_view> rows[] = {
        {R"("<b>bold</b>&amp;")", "<b>bold</b>&amp;"},
        {R"("line\nend\ttab\u001b[31m")", "line\nend\ttab\x1b[31m"},
        {R"("\u202Egnp.exe\u200F")", "\u202Egnp.exe\u200F"},
        {R"("\ud83d\ude00")", "😀"},
        {R"(" padded ")", " padded "},
        {R"("\uFFFE")", "\uFFFE"},
    };
    for (const auto& [json, expected] : rows)
        EXPECT_EQ(HeatState::parse(object("thermalTruth", json))->thermalTruth.utf8(), expected) << json;
    EXPECT_EQ(HeatState::parse(R"({"thermalTruth":"a\u0000b"})")->thermalTruth.utf8(), std::string("a\0b", 3));
}

TEST(HeatState, AVeryLongTextIsReadWhole)
{
    const std::string longText(1 << 20, 'x');
    const auto state =
        HeatState::parse(R"({"paused":[{"label":")" + longText + R"("}],"thermalTruth":")" + longText + "\"}");
    ASSERT_TRUE(state && state->paused.size() == 1);
    EXPECT_TRUE(state->paused[0].label == longText);
    EXPECT_TRUE(state->thermalTruth == longText);
}

TEST(HeatState, DeeplyNestedValuesAreNeitherReadNorHarmful)
{
    constexpr int depth = 100'000;
    std::string arrays;
    std::string objects;
    for (int i = 0; i < depth; ++i) {
        arrays += '[';
        objects += "{\"a\":";
    }
    const std::string openArrays = arrays;
    arrays += std::string(depth, ']');
    objects += '1' + std::string(depth, '}');

    for (const std::string& nested : {arrays, objects}) {
        for (const char* key : {"unknown", "thermalTruth", "hot", "coolStreak", "story", "lastMetrics", "paused"}) {
            const std::string file = R"({"updatedAt":"now",)" + object(key, nested).substr(1);
            const auto state = HeatState::parse(file);
            ASSERT_TRUE(state) << key;
            EXPECT_EQ(*state, HeatState{.updatedAt = "now"}) << key;
        }
        const auto inside = HeatState::parse(R"({"paused":[{"label":"A","reason":)" + nested + "}]}");
        ASSERT_TRUE(inside && inside->paused.size() == 1);
        EXPECT_EQ(inside->paused[0], PausedEntry{.label = "A"});
        EXPECT_EQ(HeatState::parse(R"({"paused":[{"label":"A"},)" + arrays + "]}"), HeatState());
    }
    EXPECT_EQ(HeatState::parse(arrays), std::nullopt);
    EXPECT_EQ(HeatState::parse(openArrays), std::nullopt);
    EXPECT_EQ(HeatState::parse(R"({"paused":)" + openArrays), std::nullopt);
    EXPECT_EQ(HeatState::parse(objects), HeatState());
}

TEST(HeatState, RecordsDifferInEachFieldAlone)
{
    const HeatState base;
    const HeatState others[] = {
        {.lastCheck = ""},
        {.thermalTruth = "hot"},
        {.hot = true},
        {.coolStreak = 1},
        {.hotStreak = 1},
        {.lastHotAt = ""},
        {.lastCoolAt = ""},
        {.lastRestoreAt = ""},
        {.paused = {{.label = "A"}}},
        {.quarantined = {{.id = "A"}}},
        {.updatedAt = ""},
        {.story = VerdictStory{}},
        {.spectrumClass = SpectrumClass::loop},
        {.lastMetrics = LastMetrics{}},
        {.slowActive = true},
        {.memoryReliefTip = ""},
    };
    for (std::size_t i = 0; i < std::size(others); ++i) {
        EXPECT_NE(others[i], base) << i;
        for (std::size_t j = 0; j < std::size(others); ++j)
            EXPECT_EQ(others[i] == others[j], i == j) << i << " and " << j;
    }
    EXPECT_NE((PausedEntry{.label = "A"}), (PausedEntry{.label = "A", .pid = 1}));
    EXPECT_NE((PausedEntry{.label = "A"}), (PausedEntry{.label = "A", .pausedAt = "t"}));
    EXPECT_NE((PausedEntry{.label = "A"}), (PausedEntry{.label = "A", .reason = "r"}));
    EXPECT_NE((QuarantinedEntry{.id = "A"}), (QuarantinedEntry{.id = "A", .kind = "launchd"}));
    EXPECT_NE((QuarantinedEntry{.id = "A"}), (QuarantinedEntry{.id = "A", .cmd = "c"}));
    EXPECT_NE((QuarantinedEntry{.id = "A"}), (QuarantinedEntry{.id = "A", .quarantinedAt = "t"}));
    EXPECT_NE((QuarantinedEntry{.id = "A"}), (QuarantinedEntry{.id = "A", .reason = "r"}));
    EXPECT_NE((QuarantinedEntry{.id = "A"}), (QuarantinedEntry{.id = "A", .acknowledged = true}));
}

TEST(HeatState, ListsCompareInOrder)
{
    const HeatState ab{.paused = {{.label = "A"}, {.label = "B"}}};
    const HeatState ba{.paused = {{.label = "B"}, {.label = "A"}}};
    EXPECT_NE(ab, ba);
    EXPECT_EQ(ab, HeatState(ab));
}

TEST(HeatState, TextsCompareAsUnicodeInEveryRecord)
{
    const auto stateWith = [](std::string_view text) {
        std::string json = R"({"lastCheck":"T","thermalTruth":"T","lastHotAt":"T","lastCoolAt":"T","lastRestoreAt":"T",
            "updatedAt":"T","memoryReliefTip":"T","story":{"text":"T"},"lastMetrics":{"load1":1,"menubarLine":"T"},
            "paused":[{"label":"T","pausedAt":"T","reason":"T"}],
            "quarantined":[{"id":"T","kind":"T","cmd":"T","quarantinedAt":"T","reason":"T"}]})";
        return HeatState::parse(replacingAll(json, "\"T\"", "\"" + std::string(text) + "\""));
    };
    const auto composed = stateWith("caf\u00E9 \uAC00");
    const auto decomposed = stateWith("cafe\u0301 \u1100\u1161");
    ASSERT_TRUE(composed && decomposed);
    EXPECT_NE(composed->lastCheck->utf8(), decomposed->lastCheck->utf8());
    EXPECT_EQ(*composed, *decomposed);
    EXPECT_NE(*composed, *stateWith("cafe \uAC00"));
}

}  // namespace
}  // namespace quenchly
