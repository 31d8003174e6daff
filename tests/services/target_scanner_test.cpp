#include "target_scanner.h"

#include <algorithm>
#include <functional>
#include <memory>

#include "process_fixture.h"

namespace quenchly {
namespace {

using Ids = std::vector<ProcessId>;
using By = TargetScanner::Search::By;
using State = TargetRow::State;
using TargetScanner::Search;
using TargetScanner::Situation;

constexpr const char* lmStudioService = "LM Studio.app/Contents/MacOS/LM Studio --run-as-service";

/// Answers what it is told and keeps what it was asked.
class ScriptedTable final : public ProcessTable {
public:
    std::map<Search, Ids> processes;
    std::map<ProcessId, std::string> states_;
    int refreshes = 0;
    std::vector<Search> asked;
    Ids askedStates;

    void beginRefresh() override { ++refreshes; }
    Ids named(const std::string& name) override { return answer({By::name, name}); }
    Ids matching(const std::string& pattern) override { return answer({By::commandLine, pattern}); }
    std::map<ProcessId, std::string> states(const Ids& ids) override
    {
        std::map<ProcessId, std::string> result;
        for (const ProcessId id : ids) {
            askedStates.push_back(id);
            if (states_.contains(id))
                result[id] = states_.at(id);
        }
        return result;
    }

    void add(const Text& key, ProcessId id, const std::string& state)
    {
        processes[TargetScanner::search(key)].push_back(id);
        states_[id] = state;
    }

private:
    Ids answer(const Search& search)
    {
        asked.push_back(search);
        return processes.contains(search) ? processes.at(search) : Ids();
    }
};

std::vector<PausedEntry> paused(const std::vector<Text>& labels)
{
    std::vector<PausedEntry> entries;
    for (const Text& label : labels)
        entries.push_back({.label = label});
    return entries;
}

std::vector<Text> names(const std::vector<TargetRow>& rows)
{
    std::vector<Text> result;
    for (const TargetRow& row : rows)
        result.push_back(row.name);
    return result;
}

TargetRow idle(const Text& name)
{
    return {name, State::unknown, "Idle"};
}

TargetRow running(const Text& name)
{
    return {name, State::running, "running"};
}

TargetRow easedBack(const Text& name)
{
    return {name, State::paused, "Eased back"};
}

const std::vector<TargetRow> nothingRuns{idle("Ollama"), idle("MLX LM Server"), idle("LM Studio"), idle("llama.cpp")};

std::vector<TargetRow> afterKnown(const std::vector<TargetRow>& rows)
{
    return {rows.begin() + 4, rows.end()};
}

// The table of targets

TEST(TargetScannerTable, EachKeyHasItsSearchAndItsName)
{
    const struct {
        Text key;
        Search search;
        Text displayName;
    } table[] = {
        {"ollama", {By::name, "ollama"}, "Ollama"},
        {"mlx", {By::commandLine, "mlx_lm.server"}, "MLX LM Server"},
        {"lmstudio", {By::commandLine, lmStudioService}, "LM Studio"},
        {"llama-server", {By::name, "llama-server"}, "llama.cpp"},
        {"mlx_lm.server", {By::commandLine, "mlx_lm.server"}, "MLX LM Server"},
        {"lms", {By::commandLine, lmStudioService}, "LM Studio"},
        {"llama-cpp-server", {By::name, "llama-cpp-server"}, "llama.cpp"},
        {"mymodel", {By::name, "mymodel"}, "mymodel"},
        {"custom.model.server", {By::commandLine, "custom.model.server"}, "custom.model.server"},
        {"Ollama", {By::name, "Ollama"}, "Ollama"},
        {"ollama ", {By::name, "ollama "}, "ollama "},
        {".", {By::commandLine, "."}, "."},
        {"", {By::name, ""}, ""},
        {"my[model]+", {By::name, "my[model]+"}, "my[model]+"},
        {"(my.model", {By::commandLine, "(my.model"}, "(my.model"},
        {"-x", {By::name, "-x"}, "-x"},
        {"-f.", {By::commandLine, "-f."}, "-f."},
        {"<b>bold</b>", {By::name, "<b>bold</b>"}, "<b>bold</b>"},
        {"mod\xc3\xa8le", {By::name, "mod\xc3\xa8le"}, "mod\xc3\xa8le"},
    };
    for (const auto& [key, search, displayName] : table) {
        EXPECT_EQ(TargetScanner::search(key), search) << key.utf8();
        EXPECT_EQ(TargetScanner::displayName(key), displayName) << key.utf8();
    }
}

TEST(TargetScannerTable, TheKnownTargetsAreTheFourInOrder)
{
    const std::vector<std::string_view> expected{"ollama", "mlx", "lmstudio", "llama-server"};
    EXPECT_TRUE(std::ranges::equal(TargetScanner::knownTargets, expected));
}

// Rows

TEST(TargetScannerRows, EveryRowOfTheDecisionTableForEveryKnownTarget)
{
    for (std::size_t index = 0; index < TargetScanner::knownTargets.size(); ++index) {
        const Text key = TargetScanner::knownTargets[index];
        for (unsigned bits = 0; bits < 64; ++bits) {
            const bool isPresent = (bits & 1) != 0;
            ScriptedTable table;
            if (isPresent)
                table.add(key, 10, (bits & 2) != 0 ? "T" : "S");
            Situation situation;
            if ((bits & 4) != 0)
                situation.paused = paused({key});
            if ((bits & 8) != 0)
                situation.throttledLabels = {key};
            situation.slowActive = (bits & 16) != 0;
            situation.throttleActive = (bits & 32) != 0;

            std::vector<TargetRow> expected = nothingRuns;
            const Text name = expected[index].name;
            if (isPresent)
                expected[index] = (bits >> 1) != 0 ? easedBack(name) : running(name);
            EXPECT_EQ(TargetScanner::rows(table, situation), expected) << key.utf8() << " " << bits;
        }
    }
}

TEST(TargetScannerRows, AnExtraTargetIsEasedBackExactlyWhileItsProcessRuns)
{
    for (unsigned bits = 0; bits < 32; ++bits) {
        const bool isPresent = (bits & 1) != 0;
        ScriptedTable table;
        if (isPresent)
            table.add("mymodel", 10, (bits & 2) != 0 ? "T" : "S");
        Situation situation{.paused = paused({"mymodel"})};
        if ((bits & 4) != 0)
            situation.throttledLabels = {"mymodel"};
        situation.slowActive = (bits & 8) != 0;
        situation.throttleActive = (bits & 16) != 0;
        std::vector<TargetRow> expected = nothingRuns;
        expected.push_back(isPresent ? easedBack("mymodel") : idle("mymodel"));
        EXPECT_EQ(TargetScanner::rows(table, situation), expected) << bits;
    }
}

TEST(TargetScannerRows, OtherFlagsOfTheSituationDoNotMatter)
{
    for (unsigned bits = 0; bits < 8; ++bits) {
        ScriptedTable table;
        table.add("ollama", 10, "S");
        table.add("mlx", 11, "T");
        table.add("mymodel", 12, "S");
        const Situation situation{.paused = paused({"mymodel", "absent"}),
                                  .swapCritical = (bits & 1) != 0,
                                  .stillOverloaded = (bits & 2) != 0,
                                  .workSavedOn = (bits & 4) != 0};
        const std::vector<TargetRow> expected{running("Ollama"), easedBack("MLX LM Server"), idle("LM Studio"),
                                              idle("llama.cpp"), easedBack("mymodel"),       idle("absent")};
        EXPECT_EQ(TargetScanner::rows(table, situation), expected) << bits;
    }
}

TEST(TargetScannerRows, OneStoppedProcessOfSeveralIsEnough)
{
    ScriptedTable table;
    for (ProcessId id = 1; id <= 3; ++id)
        table.add("ollama", id, id == 3 ? "T" : "R");
    table.add("mlx", 4, "S");
    EXPECT_EQ(TargetScanner::rows(table, {})[0], easedBack("Ollama"));
    EXPECT_TRUE(TargetScanner::processStopped(table, "ollama"));
    EXPECT_FALSE(TargetScanner::processStopped(table, "mlx"));
    EXPECT_FALSE(TargetScanner::processStopped(table, "llama-server"));
}

TEST(TargetScannerRows, OnlyAStateThatBeginsWithTIsStopped)
{
    for (const auto& [state, isStopped] : std::map<std::string, bool>{
             {"T", true}, {"T+", true}, {"Ts", true}, {"t", false}, {"S", false}, {"ST", false}, {"", false}}) {
        ScriptedTable table;
        table.add("ollama", 10, state);
        EXPECT_EQ(TargetScanner::processStopped(table, "ollama"), isStopped) << state;
        EXPECT_EQ(TargetScanner::rows(table, {})[0], isStopped ? easedBack("Ollama") : running("Ollama")) << state;
    }
}

TEST(TargetScannerRows, AProcessThatEndedBeforeItsStateWasReadIsPresentAndNotStopped)
{
    ScriptedTable table;
    table.processes[{By::name, "ollama"}] = {10};
    EXPECT_FALSE(TargetScanner::processStopped(table, "ollama"));
    EXPECT_EQ(TargetScanner::rows(table, {})[0], running("Ollama"));
}

TEST(TargetScannerRows, ExtraLabelsFollowInTheOrderOfTheListAndRepeatAsTheListDoes)
{
    ScriptedTable table;
    const auto rows = TargetScanner::rows(
        table, {.paused = paused({"zeta", "ollama", "mlx_lm.server", "alpha", "lms", "zeta", "llama-cpp-server"})});
    EXPECT_EQ(names(rows), (std::vector<Text>{"Ollama", "MLX LM Server", "LM Studio", "llama.cpp", "zeta",
                                              "MLX LM Server", "alpha", "LM Studio", "zeta", "llama.cpp"}));
}

TEST(TargetScannerRows, LabelsThatAreEqualAsUnicodeAreSearchedAsTheyAreWritten)
{
    const Text composed = "mod\xc3\xa8le";
    const Text decomposed = "mode\xcc\x80le";
    ASSERT_EQ(composed, decomposed);
    ScriptedTable table;
    table.add(decomposed, 10, "S");
    const auto rows = TargetScanner::rows(table, {.paused = paused({composed, decomposed})});
    EXPECT_EQ(afterKnown(rows), (std::vector<TargetRow>{idle(composed), easedBack(decomposed)}));
}

TEST(TargetScannerRows, OneScanTakesOneListingAndMakesEachSearchOnce)
{
    ScriptedTable table;
    table.add("ollama", 10, "S");
    TargetScanner::rows(table, {.paused = paused({"a.b", "ollama", "mymodel", "a.b", "mymodel", "mlx_lm.server"})});
    EXPECT_EQ(table.refreshes, 1);
    EXPECT_EQ(table.asked, (std::vector<Search>{{By::name, "ollama"},
                                                {By::commandLine, "mlx_lm.server"},
                                                {By::commandLine, lmStudioService},
                                                {By::name, "llama-server"},
                                                {By::commandLine, "a.b"},
                                                {By::name, "mymodel"}}));
    EXPECT_EQ(table.askedStates, Ids{10});
}

// Bounds

TEST(TargetScannerBounds, BeyondTheBoundTheRecordedProcessStandsForTheSearch)
{
    ScriptedTable table;
    Situation situation;
    for (ProcessId id = 1; id <= 1000; ++id) {
        const Text label = "custom.model" + std::to_string(id);
        situation.paused.push_back({.label = label, .pid = id});
        if (id % 2 == 0)
            table.add(label, id, "T");
    }
    const auto rows = TargetScanner::rows(table, situation);
    EXPECT_EQ(table.asked.size(), TargetScanner::mostSearches);
    ASSERT_EQ(rows.size(), 1004U);
    for (std::size_t id = 1; id <= 1000; ++id) {
        const Text label = "custom.model" + std::to_string(id);
        EXPECT_EQ(rows[id + 3], id % 2 == 0 ? easedBack(label) : idle(label));
    }
}

TEST(TargetScannerBounds, RepeatedLabelsDoNotCountTowardsTheBound)
{
    ScriptedTable table;
    table.add("last", 10, "T");
    Situation situation{.paused = paused(std::vector<Text>(999, "custom.model"))};
    situation.paused.push_back({.label = "last"});
    EXPECT_EQ(TargetScanner::rows(table, situation).back(), easedBack("last"));
}

TEST(TargetScannerBounds, OnlyIdsThatAProcessCanHaveAreLookedUp)
{
    ScriptedTable table;
    Situation situation;
    for (int number = 0; number < 100; ++number)
        situation.paused.push_back({.label = "model" + std::to_string(number), .pid = -number});
    const auto rows = TargetScanner::rows(table, situation);
    EXPECT_EQ(rows.size(), 104U);
    EXPECT_EQ(table.askedStates, Ids{});
    EXPECT_EQ(rows.back(), idle("model99"));
}

// Any listed target

TEST(TargetScannerAnyListedLive, OnlyTheKnownTargetsCount)
{
    EXPECT_FALSE(TargetScanner::anyListedLive({}));
    EXPECT_FALSE(TargetScanner::anyListedLive(nothingRuns));
    EXPECT_FALSE(TargetScanner::anyListedLive({running("mymodel")}));
    for (std::size_t index = 0; index < nothingRuns.size(); ++index) {
        for (const State state : {State::running, State::paused}) {
            std::vector<TargetRow> rows = nothingRuns;
            rows[index].state = state;
            EXPECT_TRUE(TargetScanner::anyListedLive(rows)) << index;
        }
    }
}

TEST(TargetScannerAnyListedLive, AnExtraRowNeverCountsEvenUnderAKnownName)
{
    for (const Text label : {"mymodel", "custom.model.server", "llama-cpp-server", "lms", "Ollama"}) {
        ScriptedTable table;
        if (label != Text("lms"))
            table.add(label, 10, "T");
        const auto rows = TargetScanner::rows(table, {.paused = paused({label})});
        EXPECT_FALSE(TargetScanner::anyListedLive(rows)) << label.utf8();
    }
}

// Real processes

/// The running system's table, of which only what a test started is seen: others may run models here.
class OwnProcesses final : public ProcessTable {
public:
    using Filter = std::function<Ids(const Ids&)>;

    explicit OwnProcesses(Filter own) : own_(std::move(own)) {}
    void beginRefresh() override { table_->beginRefresh(); }
    Ids named(const std::string& name) override { return own_(table_->named(name)); }
    Ids matching(const std::string& pattern) override { return own_(table_->matching(pattern)); }
    std::map<ProcessId, std::string> states(const Ids& ids) override { return table_->states(ids); }

private:
    Filter own_;
    std::unique_ptr<ProcessTable> table_ = makeProcessTable();
};

class TargetScannerTest : public ProcessFixture {
protected:
    std::vector<TargetRow> rows(const std::vector<Text>& labels = {})
    {
        return TargetScanner::rows(table, {.paused = paused(labels)});
    }

    TargetRow extraRow(const Text& label) { return rows({label}).at(4); }

    Ids matchingPids(const Text& key)
    {
        table.beginRefresh();
        return TargetScanner::matchingPids(table, key);
    }

    bool processStopped(const Text& key)
    {
        table.beginRefresh();
        return TargetScanner::processStopped(table, key);
    }

    OwnProcesses table{[this](const Ids& ids) { return own(ids); }};
};

TEST_F(TargetScannerTest, WithoutAnyServerAllFourAreIdle)
{
    EXPECT_EQ(rows(), nothingRuns);
    EXPECT_FALSE(TargetScanner::anyListedLive(rows()));
}

TEST_F(TargetScannerTest, EachServerIsFoundUnderItsName)
{
    start("ollama", {"serve"});
    EXPECT_EQ(rows()[0], running("Ollama"));
    start("python3", {"-m", "mlx_lm.server", "--port", "8080"});
    EXPECT_EQ(rows()[1], running("MLX LM Server"));
    start("service", {"/Applications/LM Studio.app/Contents/MacOS/LM Studio", "--run-as-service"});
    EXPECT_EQ(rows()[2], running("LM Studio"));
    start("llama-server");
    EXPECT_EQ(rows()[3], running("llama.cpp"));
    EXPECT_TRUE(TargetScanner::anyListedLive(rows()));
}

TEST_F(TargetScannerTest, ProgramsThatAreNoListedServersAreNot)
{
    start("ollama-helper", {"ollama", "llama-server"});
    start("service", {"/Applications/LM Studio.app/Contents/MacOS/LM Studio"});
    start("python3", {"-m", "mlx_lm.generate"});
    EXPECT_EQ(rows(), nothingRuns);
}

TEST_F(TargetScannerTest, AServerHeldInPlaceIsEasedBackWhetherItIsListedOrNot)
{
    start("ollama").stop();
    EXPECT_EQ(rows({"ollama"})[0], easedBack("Ollama"));
    EXPECT_EQ(rows()[0], easedBack("Ollama"));
    EXPECT_TRUE(processStopped("ollama"));
    EXPECT_EQ(rows({"ollama"}).size(), 4U);
}

TEST_F(TargetScannerTest, AServerListedAsPausedThatRunsIsEasedBack)
{
    start("python3", {"-m", "mlx_lm.server"});
    EXPECT_EQ(rows({"mlx"})[1], easedBack("MLX LM Server"));
    EXPECT_TRUE(TargetScanner::anyListedLive(rows({"mlx"})));
    EXPECT_FALSE(processStopped("mlx"));
}

TEST_F(TargetScannerTest, AServerThatEndedIsIdleAgain)
{
    Child& server = start("llama-server");
    EXPECT_EQ(rows()[3], running("llama.cpp"));
    server.end();
    EXPECT_EQ(rows({"llama-server"}), nothingRuns);
}

TEST_F(TargetScannerTest, TheOtherLlamaServerHasARowOfItsOwn)
{
    start("llama-cpp-server").stop();
    std::vector<TargetRow> expected = nothingRuns;
    expected.push_back(easedBack("llama.cpp"));
    EXPECT_EQ(rows({"llama-cpp-server"}), expected);
    EXPECT_EQ(rows(), nothingRuns);
}

TEST_F(TargetScannerTest, ALabelWithADotIsSearchedInTheCommandLine)
{
    const Ids expected{start("python3", {"-m", "custom.model.server", "--port", "1"}).id()};
    EXPECT_EQ(matchingPids("custom.model.server"), expected);
    EXPECT_EQ(matchingPids("custom[.]model[.]server --port [0-9]$"), expected);
    EXPECT_EQ(extraRow("custom.model.server"), easedBack("custom.model.server"));
}

TEST_F(TargetScannerTest, ADotInALabelStandsForAnyCharacter)
{
    const Ids expected{start("custom-model-server").id()};
    EXPECT_EQ(matchingPids("custom.model.server"), expected);
    EXPECT_EQ(matchingPids("custom[.]model[.]server"), Ids{});
}

TEST_F(TargetScannerTest, ALabelWithoutADotIsTheWholeName)
{
    const Ids expected{start("mymodel", {"other"}).id()};
    start("mymodel-helper", {"mymodel"});
    EXPECT_EQ(matchingPids("mymodel"), expected);
    EXPECT_EQ(matchingPids("mymode"), Ids{});
    EXPECT_EQ(extraRow("mymodel"), easedBack("mymodel"));
    EXPECT_EQ(extraRow("other"), idle("other"));
}

TEST_F(TargetScannerTest, ExpressionCharactersMeanThemselvesInALabelWithoutADot)
{
    start("model");
    for (const Text label : {"mode+l", "mo[d]el", "model|x", "^model$", "model*", "(model"})
        EXPECT_EQ(extraRow(label), idle(label));
    start("(model+");
    EXPECT_EQ(extraRow("(model+"), easedBack("(model+"));
}

TEST_F(TargetScannerTest, AnInvalidExpressionFindsNothing)
{
    start("python3", {"custom.model", "(custom.model", "[custom.model"});
    for (const Text label : {"(custom.model", "[custom.model", "custom.model\\", "custom.model{2,1}", "*custom.model)"})
        EXPECT_EQ(extraRow(label), idle(label));
}

TEST_F(TargetScannerTest, ALeadingDashIsPartOfTheLabel)
{
    start("-model", {"--port", "8.1"});
    EXPECT_EQ(extraRow("-model"), easedBack("-model"));
    EXPECT_EQ(extraRow("--port 8.1"), easedBack("--port 8.1"));
    EXPECT_EQ(extraRow("-l"), idle("-l"));
}

TEST_F(TargetScannerTest, EmptyLongAndMarkedUpLabelsHaveIdleRows)
{
    start("ollama");
    const std::string million(1'000'000, 'x');
    std::string accented;
    for (int count = 0; count < 500'000; ++count)
        accented += "\xc3\xa8";
    const std::vector<Text> labels{
        "", Text(million), Text("." + million), Text(accented), "<b>bold</b>", "<img src='a.png'>", "\n", "\xff\xfe."};
    std::vector<TargetRow> expected;
    for (const Text& label : labels)
        expected.push_back(idle(label));
    EXPECT_EQ(afterKnown(rows(labels)), expected);
}

TEST_F(TargetScannerTest, AThousandHeldTargetsAreAllListed)
{
    Child& last = start("python3", {"-m", "custom.model999"});
    last.stop();
    Situation situation;
    for (int number = 0; number < 1000; ++number)
        situation.paused.push_back({.label = "custom.model" + std::to_string(number), .pid = 0});
    situation.paused.back().pid = last.id();
    const auto rows = TargetScanner::rows(table, situation);
    ASSERT_EQ(rows.size(), 1004U);
    EXPECT_EQ(rows.back(), easedBack("custom.model999"));
    EXPECT_EQ(rows[1002], idle("custom.model998"));
}

}  // namespace
}  // namespace quenchly
