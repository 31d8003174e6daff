#include "process_table.h"

#include <fcntl.h>
#include <linux/sched.h>
#include <malloc.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "process_fixture.h"
#include "process_table_linux.h"

namespace quenchly {

namespace {

using Ids = std::vector<ProcessId>;

constexpr int refreshesOfAMinute = 60;

class ProcessTableTest : public ProcessFixture {
protected:
    Ids named(const std::string& name)
    {
        table->beginRefresh();
        return own(table->named(name));
    }

    Ids matching(const std::string& pattern)
    {
        table->beginRefresh();
        return own(table->matching(pattern));
    }

    std::string state(ProcessId id)
    {
        table->beginRefresh();
        const auto states = table->states({id});
        return states.contains(id) ? states.at(id) : "";
    }

    bool reachesState(ProcessId id, const std::string& expected)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (state(id) != expected && std::chrono::steady_clock::now() < deadline)
            std::this_thread::yield();
        return state(id) == expected;
    }

    /// Until nothing on the machine is young any more.
    static void growOld(ProcessTable& aged)
    {
        for (int refresh = 0; refresh < refreshesOfAMinute; ++refresh) {
            aged.beginRefresh();
            aged.matching("nothing has this command line");
        }
    }

    static bool hasTool(const std::string& tool) { return !output({tool, "--version"}).empty(); }

    const std::unique_ptr<ProcessTable> table = makeProcessTable();
};

std::size_t openDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

/// Keeps the zero bytes of a literal.
template <std::size_t size>
std::string bytes(const char (&literal)[size])
{
    return std::string(literal, size - 1);
}

}  // namespace

// Names

TEST_F(ProcessTableTest, AProcessIsFoundByItsExactName)
{
    const Ids ollama{start("ollama", {"serve"}).id()};
    start("ollama-helper");
    start("not-ollama");
    EXPECT_EQ(named("ollama"), ollama);
    EXPECT_EQ(named("ollam"), Ids{});
    EXPECT_EQ(named("Ollama"), Ids{});
    EXPECT_EQ(named("o.*a"), Ids{});
}

TEST_F(ProcessTableTest, SeveralProcessesOfOneNameComeInAscendingOrder)
{
    Ids expected{start("llama-server").id(), start("llama-server").id(), start("llama-server").id()};
    std::ranges::sort(expected);
    EXPECT_EQ(named("llama-server"), expected);
}

TEST_F(ProcessTableTest, ANameOfSixteenBytesIsFound)
{
    const Ids expected{start("llama-cpp-server", {"--port", "1"}).id()};
    EXPECT_EQ(named("llama-cpp-server"), expected);
}

TEST_F(ProcessTableTest, NamesThatShareTheirFirstFifteenBytesAreKeptApart)
{
    const Ids exact{start("llama-cpp-server").id()};
    const Ids longer{start("llama-cpp-serverX").id()};
    const Ids shorter{start("llama-cpp-serve").id()};
    EXPECT_EQ(named("llama-cpp-server"), exact);
    EXPECT_EQ(named("llama-cpp-serverX"), longer);
    EXPECT_EQ(named("llama-cpp-serve"), shorter);
    EXPECT_EQ(named("llama-cpp-serverXY"), Ids{});
    EXPECT_EQ(named("llama-cpp-serv"), Ids{});
}

TEST_F(ProcessTableTest, TheLongNameOfAScriptIsFound)
{
    const std::filesystem::path path = script("llama-cpp-server");
    const Child child(path, {path.string(), "--port", "1"});
    table->beginRefresh();
    EXPECT_EQ(table->named("llama-cpp-server"), Ids{child.id()});
    EXPECT_EQ(table->named("llama-cpp-serve"), Ids{});
}

TEST_F(ProcessTableTest, ALongNameIsFoundThroughTheExecutableWhenTheFirstArgumentIsAnother)
{
    const Child child(program("llama-cpp-server"), {"llama", "--port", "1"});
    table->beginRefresh();
    EXPECT_EQ(table->named("llama-cpp-server"), Ids{child.id()});
}

TEST_F(ProcessTableTest, ALongNameIsFoundAfterItsFileWasReplaced)
{
    const Child child(program("llama-cpp-server"), {"llama"});
    std::filesystem::remove(program("llama-cpp-server"));
    table->beginRefresh();
    EXPECT_EQ(table->named("llama-cpp-server"), Ids{child.id()});
}

TEST_F(ProcessTableTest, NamesWithBlanksParenthesesAndNewlinesAreFound)
{
    for (const std::string name : {"a b", "x) R (y", "two\nlines", "newline\n", "(", "\xff\xfe"}) {
        Child& child = start(name);
        child.stop();
        EXPECT_EQ(named(name), Ids{child.id()}) << name;
        EXPECT_EQ(state(child.id()), "T") << name;
    }
}

TEST_F(ProcessTableTest, ARenamedProcessIsFoundByItsNewName)
{
    Child& child = start("ollama");
    EXPECT_EQ(named("ollama"), Ids{child.id()});
    child.rename("runner");
    EXPECT_EQ(named("ollama"), Ids{});
    EXPECT_EQ(named("runner"), Ids{child.id()});
}

TEST_F(ProcessTableTest, NoProcessHasAnEmptyName)
{
    start("ollama");
    EXPECT_EQ(named(""), Ids{});
    EXPECT_EQ(named(bytes("ollama\0")), Ids{});
    EXPECT_EQ(named(std::string(1'000'000, 'x')), Ids{});
}

TEST_F(ProcessTableTest, ExactNamesAgreeWithPgrep)
{
    if (!hasTool("pgrep"))
        GTEST_SKIP() << "no pgrep";
    start("ollama", {"serve"});
    start("llama-server");
    start("llama-cpp-serve");
    start("ollama").becomeZombie();
    for (const std::string name : {"ollama", "llama-server", "llama-cpp-serve", "llama", "serve"})
        EXPECT_EQ(named(name), ownPrinted({"pgrep", "-x", name})) << name;
    EXPECT_EQ(named("ollama").size(), 2U);
}

// Command lines

TEST_F(ProcessTableTest, AnExpressionIsFoundAnywhereInTheCommandLine)
{
    const Ids mlx{start("python3", {"-m", "mlx_lm.server", "--port", "1"}).id()};
    const Ids quenchly{start("quenchly", {"/Applications/Quenchly.app/Contents/MacOS/quenchly", "check"}).id()};
    EXPECT_EQ(matching("mlx_lm.server"), mlx);
    EXPECT_EQ(matching("-m mlx_lm[.]server --port [0-9]+$"), mlx);
    EXPECT_EQ(matching("MacOS/quenchly check"), quenchly);
    EXPECT_EQ(matching("quenchly.ts check"), Ids{});
}

TEST_F(ProcessTableTest, EveryQuestionOfARefreshIsAnsweredFromOneListing)
{
    table->beginRefresh();
    EXPECT_EQ(own(table->matching("late-comer")), Ids{});
    const ProcessId id = start("late-comer").id();
    EXPECT_EQ(own(table->matching("late-comer")), Ids{});
    EXPECT_EQ(own(table->named("late-comer")), Ids{});
    EXPECT_EQ(table->states({id}).size(), 0U);
    EXPECT_EQ(matching("late-comer"), Ids{id});
}

TEST_F(ProcessTableTest, CommandLineMatchesAgreeWithPgrep)
{
    if (!hasTool("pgrep"))
        GTEST_SKIP() << "no pgrep";
    start("ollama", {"serve"});
    start("python3", {"-m", "mlx_lm.server", "--port", "1"});
    start("odd", {"", "", "three  blanks", "", ""});
    start("controls", {"a\nb", "c\td", "\x1b[31m", "\x7f", "\n"});
    start("bytes", {"x\xff\xfey", "a\xc0\xaf"});
    start("letters", {"z\xc3\xbcrich"});
    start("zombie").becomeZombie();
    start("two\nlines").becomeZombie();
    start("stopped").stop();
    const char* const patterns[] = {
        "",
        ".",
        "^",
        "$",
        "^$",
        "ollama",
        "ollama serve$",
        "mlx_lm.server",
        "(^|/)python3 -m",
        "odd   three  blanks$",
        "three +blanks *$",
        "a b",
        "a.b c.d",
        "a b c[?]d [?]\\[31m [?]  ?$",
        "[?] +$",
        "two.lines",
        "two[?]lines",
        "c\td",
        "x..y",
        "x[?]{2}y",
        "x\xff",
        "z.rich",
        "z..rich",
        "z\xc3\xbcrich",
        "^\\[zombie\\] <defunct>$",
        "^zombie",
        "stopped|zombie",
        "*",
        "*odd",
        "()",
        "a{1,2}b",
        "x|^/",
        "(^/)(.*)$",
    };
    for (const std::string pattern : patterns)
        EXPECT_EQ(matching(pattern), ownPrinted({"env", "LC_ALL=C.UTF-8", "pgrep", "-f", "--", pattern})) << pattern;
}

TEST_F(ProcessTableTest, AKernelThreadIsMatchedByItsNameInBrackets)
{
    table->beginRefresh();
    const Ids daemon = table->named("kthreadd");
    if (daemon.empty())
        GTEST_SKIP() << "kernel threads are not visible";
    EXPECT_EQ(table->matching("^\\[kthreadd\\]$"), daemon);
}

TEST_F(ProcessTableTest, TheProcessItselfNeverMatches)
{
    start("ollama");
    table->beginRefresh();
    const Ids all = table->matching("");
    EXPECT_FALSE(all.empty());
    EXPECT_EQ(std::ranges::count(all, ProcessId{::getpid()}), 0);
}

TEST_F(ProcessTableTest, AnInvalidExpressionMatchesNothing)
{
    start("ollama", {"(", "[", "a\\"});
    for (const std::string pattern :
         {"(", "[", "a\\", "[[:nothing:]]", "a{2,1}", "(ollama", "ollama)", "a)(b", "[z-a]"})
        EXPECT_EQ(matching(pattern), Ids{}) << pattern;
}

TEST_F(ProcessTableTest, AnExpressionThatMightCostMuchIsAnsweredAtOnce)
{
    start("ollama", {std::string(100 * 1024, 'x')});
    const auto spent = [] {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time.tv_sec;
    };
    const auto before = spent();
    for (const std::string& pattern :
         {std::string("((x?)?){1000}=."), std::string("((x?)?){200}=."), std::string("((x{1,255}){1,255}){1,255}"),
          std::string("(x*)\\1b"), std::string("(((((x+)+)+)+)+)+=."), std::string(1'000'000, '('),
          std::string(1'000'000, 'x'), bytes("ollama\0")})
        EXPECT_EQ(matching(pattern), Ids{}) << pattern.substr(0, 40);
    EXPECT_LT(spent() - before, 20);
}

TEST_F(ProcessTableTest, ALongCommandLineIsMatchedInOnePass)
{
    const std::string half(64 * 1024, 'a');
    const Ids expected{start("ollama", {half, half}).id()};
    EXPECT_EQ(matching("a.*b.*c"), Ids{});
    EXPECT_EQ(matching("ollama a.*a"), expected);
}

TEST_F(ProcessTableTest, ACommandLineIsReadUpToItsFirst128KiB)
{
    std::vector<std::string> arguments(18, std::string(100 * 1024, 'a'));
    arguments.front() = "first";
    arguments.back() = "last";
    const Ids expected{start("ollama", arguments).id()};
    EXPECT_EQ(matching("first aaa"), expected);
    EXPECT_EQ(matching("last"), Ids{});
}

TEST_F(ProcessTableTest, MoreExpressionsThanAreKeptAreStillAnswered)
{
    const Ids expected{start("ollama").id()};
    for (int round = 0; round < 2; ++round) {
        for (int number = 0; number < 100; ++number) {
            EXPECT_EQ(matching("absent" + std::to_string(number)), Ids{});
            EXPECT_EQ(matching("oll(ama|" + std::to_string(number) + ")"), expected);
        }
    }
}

// Exec, reuse and memory

TEST_F(ProcessTableTest, AnExecRightAfterTheForkIsNoticedAtOnce)
{
    Child& child = startHeld("server", {"server", "forked-then-replaced"});
    EXPECT_EQ(matching("forked-then-replaced"), Ids{});
    child.letExec();
    EXPECT_EQ(matching("forked-then-replaced"), Ids{child.id()});
    EXPECT_EQ(named("server"), Ids{child.id()});
}

TEST_F(ProcessTableTest, AnExecInALongRunningProcessIsNoticed)
{
    Child& child = start("wrapper", {"before"});
    growOld(*table);
    child.exec({"quenchly", "check-at-last"});
    int refreshes = 1;
    while (matching("quenchly check-at-last").empty() && refreshes < refreshesOfAMinute)
        ++refreshes;
    EXPECT_EQ(matching("quenchly check-at-last"), Ids{child.id()});
    EXPECT_EQ(matching("wrapper before"), Ids{});
}

TEST_F(ProcessTableTest, AnExecInALongRunningProcessIsNoticedSoonWhereTheOthersSleep)
{
    std::vector<Child*> children;
    for (int count = 0; count < 20; ++count) {
        children.push_back(&start("wrapper"));
        children.back()->stop();
        showInFakeRoot(children.back()->id());
    }
    fakeSelf(::getpid());
    const auto fake = makeLinuxProcessTable(fakeRoot());
    growOld(*fake);
    for (Child* child : {children.front(), children[9], children.back()}) {
        ASSERT_EQ(::kill(static_cast<pid_t>(child->id()), SIGCONT), 0);
        child->exec({"quenchly", std::to_string(child->id())});
        child->stop();
        int refreshes = 0;
        do {
            fake->beginRefresh();
            ++refreshes;
        } while (fake->matching("quenchly " + std::to_string(child->id())).empty() && refreshes < 1000);
        EXPECT_LE(refreshes, refreshesOfAMinute / 5);
    }
}

TEST_F(ProcessTableTest, AProcessThatMatchesIsLookedAtOnEveryRefresh)
{
    Child& child = start("wrapper", {"matches-for-now"});
    growOld(*table);
    EXPECT_EQ(matching("matches-for-now"), Ids{child.id()});
    child.exec({"quenchly"});
    EXPECT_EQ(matching("matches-for-now"), Ids{});
}

TEST_F(ProcessTableTest, AProcessThatEndedButIsNotReapedNoLongerMatches)
{
    Child& child = start("wrapper", {"ends-soon"});
    growOld(*table);
    EXPECT_EQ(matching("ends-soon"), Ids{child.id()});
    child.becomeZombie();
    EXPECT_EQ(matching("ends-soon"), Ids{});
    child.end();
    EXPECT_EQ(matching("wrapper"), Ids{});
}

TEST_F(ProcessTableTest, AProcessThatHasNotRunIsNotReadAgain)
{
    Child& child = start("wrapper");
    child.stop();
    fakeSelf(::getpid());
    fakeProcess(std::to_string(child.id()), bytes("first\0"));
    const auto fake = makeLinuxProcessTable(fakeRoot());
    EXPECT_EQ(fake->matching("first"), Ids{child.id()});

    fakeProcess(std::to_string(child.id()), bytes("second\0"));
    for (int refresh = 0; refresh < 2 * refreshesOfAMinute; ++refresh) {
        fake->beginRefresh();
        EXPECT_EQ(fake->matching("second"), Ids{});
    }
}

TEST_F(ProcessTableTest, WithoutClocksEveryProcessIsReadAgainInTurn)
{
    for (int id = 1; id <= 300; ++id)
        fakeProcess(std::to_string(id), bytes("first\0"));
    const auto fake = makeLinuxProcessTable(fakeRoot());
    growOld(*fake);
    for (int id = 1; id <= 300; ++id)
        fakeProcess(std::to_string(id), bytes("second\0"));

    std::size_t before = 0;
    for (int refresh = 0; refresh < refreshesOfAMinute; ++refresh) {
        fake->beginRefresh();
        const std::size_t noticed = fake->matching("second").size();
        EXPECT_LE(noticed - before, 300U / 20);
        before = noticed;
    }
    EXPECT_EQ(before, 300U);
}

TEST_F(ProcessTableTest, AReusedIdIsANewProcess)
{
    Child& child = start("wrapper");
    child.stop();
    const std::string id = std::to_string(child.id());
    fakeSelf(::getpid());
    fakeProcess(id, bytes("first\0"));
    fakeProcess("new", bytes("second\0"));
    const auto fake = makeLinuxProcessTable(fakeRoot());
    growOld(*fake);
    EXPECT_EQ(fake->matching("first"), Ids{child.id()});
    std::filesystem::rename(fakeRoot() / id, fakeRoot() / "old");
    std::filesystem::rename(fakeRoot() / "new", fakeRoot() / id);
    fake->beginRefresh();
    EXPECT_EQ(fake->matching("first"), Ids{});
    EXPECT_EQ(fake->matching("second"), Ids{child.id()});
}

TEST_F(ProcessTableTest, AnIdReusedByTheSystemIsANewProcess)
{
    Child& first = start("wrapper", {"had-the-id-first"});
    const auto id = static_cast<pid_t>(first.id());
    growOld(*table);
    first.end();

    std::array<int, 2> hold{};
    ASSERT_EQ(::pipe2(hold.data(), O_CLOEXEC), 0);
    clone_args arguments{};
    arguments.exit_signal = SIGCHLD;
    arguments.set_tid = reinterpret_cast<std::uintptr_t>(&id);
    arguments.set_tid_size = 1;
    const long second = ::syscall(SYS_clone3, &arguments, sizeof arguments);
    if (second == 0) {
        char byte = 0;
        ::close(hold[1]);
        ::_exit(static_cast<int>(::read(hold[0], &byte, 1)));
    }
    ::close(hold[0]);
    table->beginRefresh();
    const Ids found = table->matching("");
    const Ids old = table->matching("had-the-id-first");
    ::close(hold[1]);
    if (second < 0)
        GTEST_SKIP() << "ids cannot be chosen";
    ::waitpid(id, nullptr, 0);
    EXPECT_EQ(std::ranges::count(found, id), 1);
    EXPECT_EQ(old, Ids{});
}

TEST_F(ProcessTableTest, NoDescriptorIsLeftOpen)
{
    Child& child = start("llama-cpp-server");
    const auto refresh = [&] {
        table->beginRefresh();
        table->matching("llama-cpp");
        table->named("llama-cpp-server");
        table->states({child.id(), 1, 999'999'999});
    };
    refresh();
    const std::size_t before = openDescriptors();
    for (int count = 0; count < 200; ++count)
        refresh();
    EXPECT_EQ(openDescriptors(), before);
    {
        const auto other = makeProcessTable();
        other->matching("");
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(ProcessTableTest, TheKeptDescriptorIsNotInherited)
{
    const std::size_t before = openDescriptors();
    table->named("ollama");
    ASSERT_EQ(openDescriptors(), before + 1);
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        if (std::filesystem::read_symlink(entry, error) != "/proc")
            continue;
        EXPECT_NE(::fcntl(std::stoi(entry.path().filename()), F_GETFD) & FD_CLOEXEC, 0);
    }
}

TEST_F(ProcessTableTest, WhatIsCreatedBetweenListingsIsFoundAtOnce)
{
    for (int refresh = 0; refresh < refreshesOfAMinute; ++refresh) {
        Child& child = start("created-between");
        EXPECT_EQ(matching("created-between"), Ids{child.id()}) << "in refresh " << refresh;
        child.end();
        EXPECT_EQ(matching("created-between"), Ids{}) << "in refresh " << refresh;
    }
}

TEST_F(ProcessTableTest, MoreNewProcessesThanTheIdsAreFollowedForAreFound)
{
    for (int refresh = 0; refresh < 3; ++refresh)
        matching("created-at-once");
    Ids ids;
    for (int count = 0; count < 150; ++count)
        ids.push_back(start("created-at-once").id());
    std::ranges::sort(ids);
    EXPECT_EQ(matching("created-at-once"), ids);
}

TEST_F(ProcessTableTest, AThreadCreatedBetweenListingsIsNoProcess)
{
    const std::string pattern = "process_table_test";
    for (int refresh = 0; refresh < 3; ++refresh)
        matching(pattern);
    std::promise<ProcessId> id;
    std::promise<void> finish;
    std::thread thread([&] {
        id.set_value(::syscall(SYS_gettid));
        finish.get_future().wait();
    });
    const ProcessId threadId = id.get_future().get();
    const Ids found = matching(pattern);
    finish.set_value();
    thread.join();
    EXPECT_EQ(std::ranges::count(found, threadId), 0);
}

TEST_F(ProcessTableTest, VanishedProcessesLeaveNothingInMemory)
{
    // So much that what others start meanwhile, and is remembered too, does not matter.
    constexpr std::size_t much = 100 * 100'000;
    matching("ollama");
    std::vector<Child*> children;
    for (std::size_t count = 0; count < much / 100'000; ++count)
        children.push_back(&start("ollama", {std::string(100'000, 'a')}));
    const std::size_t before = ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
    EXPECT_EQ(matching("ollama").size(), children.size());
    for (Child* child : children)
        child->end();
    EXPECT_EQ(matching("ollama"), Ids{});
    EXPECT_LT(::mallinfo2().uordblks + ::mallinfo2().hblkhd, before + much / 10);
}

// States

TEST_F(ProcessTableTest, StatesAreTheLettersOfPs)
{
    Child& asleep = start("asleep");
    Child& stopped = start("stopped");
    Child& zombie = start("x) T (");
    stopped.stop();
    zombie.becomeZombie();
    EXPECT_TRUE(reachesState(asleep.id(), "S"));
    EXPECT_EQ(state(stopped.id()), "T");
    EXPECT_EQ(state(zombie.id()), "Z");
    EXPECT_EQ(state(::getpid()), "R");
    if (!hasTool("ps"))
        return;
    for (const ProcessId id : {asleep.id(), stopped.id(), zombie.id()})
        EXPECT_EQ(output({"ps", "-o", "stat=", "-p", std::to_string(id)}).substr(0, 1), state(id));
}

TEST_F(ProcessTableTest, StatesAreReadAnewInEveryRefresh)
{
    Child& child = start("ollama");
    EXPECT_TRUE(reachesState(child.id(), "S"));
    child.stop();
    EXPECT_EQ(state(child.id()), "T");
}

TEST_F(ProcessTableTest, IdsThatNameNoProcessHaveNoState)
{
    Child& child = start("ollama");
    const ProcessId gone = child.id();
    child.end();
    table->beginRefresh();
    constexpr ProcessId most = std::numeric_limits<ProcessId>::max();
    constexpr ProcessId least = std::numeric_limits<ProcessId>::min();
    EXPECT_TRUE(table->states({0, -1, gone, most, least, ProcessId{1} << 32}).empty());
    EXPECT_TRUE(table->states({}).empty());
}

TEST_F(ProcessTableTest, AThreadIsNoProcess)
{
    std::array<int, 2> hold{};
    std::array<int, 2> told{};
    ASSERT_EQ(::pipe2(hold.data(), O_CLOEXEC), 0);
    ASSERT_EQ(::pipe2(told.data(), O_CLOEXEC), 0);
    std::thread thread([&] {
        const pid_t id = ::gettid();
        char byte = 0;
        EXPECT_EQ(::write(told[1], &id, sizeof id), ssize_t{sizeof id});
        EXPECT_EQ(::read(hold[0], &byte, 1), 0);
    });
    pid_t id = 0;
    EXPECT_EQ(::read(told[0], &id, sizeof id), ssize_t{sizeof id});
    EXPECT_EQ(state(id), "");
    ::close(hold[1]);
    thread.join();
    for (const int descriptor : {hold[0], told[0], told[1]})
        ::close(descriptor);
}

// Ugly folders

TEST_F(ProcessTableTest, AMissingFolderHasNoProcesses)
{
    const auto missing = makeLinuxProcessTable("/nowhere/proc");
    EXPECT_EQ(missing->named("ollama"), Ids{});
    EXPECT_EQ(missing->matching(""), Ids{});
    EXPECT_TRUE(missing->states({1}).empty());
}

TEST_F(ProcessTableTest, ProcessesThatCannotBeReadAreLeftOut)
{
    fakeProcess("10", bytes("whole\0"), "whole");
    fakeProcess("9", bytes("whole\0"), "whole");
    std::filesystem::create_directory(fakeRoot() / "11");
    std::filesystem::create_directories(fakeRoot() / "12" / "cmdline");
    std::filesystem::create_directories(fakeRoot() / "99999999999999999999");
    std::filesystem::create_directories(fakeRoot() / "7x");
    std::filesystem::create_symlink("13", fakeRoot() / "13");
    const auto fake = makeLinuxProcessTable(fakeRoot());
    for (int refresh = 0; refresh < 50; ++refresh) {
        fake->beginRefresh();
        EXPECT_EQ(fake->matching(""), (Ids{9, 10}));
        EXPECT_EQ(fake->named("whole"), (Ids{9, 10}));
        EXPECT_EQ(fake->states({9, 10, 11, 12, 13}).size(), 2U);
    }
}

TEST_F(ProcessTableTest, ForbiddenCommandLinesMatchNothingUntilTheyCanBeRead)
{
    fakeProcess("10", bytes("secret\0"));
    std::filesystem::permissions(fakeRoot() / "10" / "cmdline", std::filesystem::perms::none);
    if (::access((fakeRoot() / "10" / "cmdline").c_str(), R_OK) == 0)
        GTEST_SKIP() << "this user may read everything";
    const auto fake = makeLinuxProcessTable(fakeRoot());
    EXPECT_EQ(fake->matching(""), Ids{});
    std::filesystem::permissions(fakeRoot() / "10" / "cmdline", std::filesystem::perms::owner_read);
    fake->beginRefresh();
    EXPECT_EQ(fake->matching("secret"), Ids{10});
}

TEST_F(ProcessTableTest, BrokenStatusFilesGiveNoState)
{
    const std::vector<std::string> broken{"", "1 (", "1 )(", "1 ()", "1 (x) ", "1 (x) SS", ")", "\n"};
    for (std::size_t index = 0; index < broken.size(); ++index) {
        const std::string id = std::to_string(index + 1);
        fakeProcess(id, "");
        std::ofstream(fakeRoot() / id / "stat") << broken[index];
    }
    const auto fake = makeLinuxProcessTable(fakeRoot());
    EXPECT_TRUE(fake->states({1, 2, 3, 4, 5, 6, 7, 8}).empty());
    EXPECT_EQ(fake->matching(""), Ids{});
}

}  // namespace quenchly
