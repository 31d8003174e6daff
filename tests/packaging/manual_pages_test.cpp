#include <gtest/gtest.h>

#include <QProcess>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

#include "l10n.h"
#include "patience.h"
#include "program.h"
#include "test_files.h"
#include "text.h"

namespace quenchly {
namespace {

using testing::ProgramRun;

struct Manual {
    const char* name;
    const char* program;
    const char* page;
};

std::string printed(const Manual& manual, const char* option)
{
    return testing::runProgram(manual.program, {option}).output;
}

std::set<std::string> allOf(const std::string& text, const char* pattern)
{
    const std::regex expression(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        found.insert((*match)[1]);
    return found;
}

class ManualPage : public ::testing::TestWithParam<Manual> {
protected:
    std::string page = testing::contentOf(GetParam().page);
};

TEST_P(ManualPage, ExplainsTheOptionsThatHelpNames)
{
    const std::set<std::string> named = allOf(printed(GetParam(), "--help"), "--([a-z][a-z-]*)");
    ASSERT_FALSE(named.empty());
    EXPECT_EQ(allOf(page, "\n\\.It Fl -([a-z-]+)"), named);
    EXPECT_EQ(allOf(page.substr(0, page.find(".Sh DESCRIPTION")), "Fl -([a-z-]+)"), named);
}

/// What a page prints for the literal words between two of its lines.
std::string wordsBetween(const std::string& page, const std::string& before, const std::string& after)
{
    const auto start = page.find(before);
    const auto end = page.find(after, start);
    if (start == std::string::npos || end == std::string::npos)
        return "absent";
    std::string words = replacingAll(page.substr(start + before.size(), end - start - before.size()), ".Cm ", "");
    words = replacingAll(words, " ,", ",");
    return replacingAll(words, "\n", " ");
}

/// A text without the line breaks that fit it into columns.
std::string withoutBreaks(const std::string& text)
{
    return std::regex_replace(text, std::regex("\\s+"), " ");
}

TEST_P(ManualPage, NamesTheLanguagesAsTheProgramDoes)
{
    const std::string languages = L10n::languageCodes(" or ");
    EXPECT_EQ(wordsBetween(page, "Use a language other than the system's:\n", " .\n"), languages);
    EXPECT_NE(printed(GetParam(), "--help").find(" " + languages), std::string::npos);
    const ProgramRun refused = testing::runProgram(GetParam().program, {"--language", "fr"});
    EXPECT_EQ(refused.errors,
              std::string(GetParam().name) + ": unknown language: fr (" + L10n::languageCodes(", ") + ")\n");
}

TEST_P(ManualPage, IsOfTheProgramsVersion)
{
    const std::string name = std::string(GetParam().name) + " ";
    const std::string version = printed(GetParam(), "--version");
    ASSERT_EQ(version.substr(0, name.size()), name);
    const std::string number = version.substr(name.size(), version.find('\n') - name.size());
    EXPECT_EQ(allOf(page, "\n\\.Os \"Quenchly ([^\"]*)\""), std::set{number});
}

TEST_P(ManualPage, IsWellFormed)
{
    if (!testing::isInstalled(QUENCHLY_MANDOC))
        GTEST_SKIP() << "mandoc is not installed";
    const ProgramRun run = testing::runProgram(QUENCHLY_MANDOC, {"-Tlint", "-Wwarning", GetParam().page});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.output + run.errors, "");
}

TEST(ManualPages, NameTheScenariosThatTheStandInPlays)
{
    const std::string played = testing::runProgram(QUENCHLY_DEMO_TOOL_PATH, {"scenario"}).output;
    ASSERT_FALSE(played.empty());
    std::string names = replacingAll(played.substr(0, played.size() - 1), "\n", ", ");
    names.replace(names.rfind(", "), 2, " and ");
    EXPECT_EQ(wordsBetween(testing::contentOf(QUENCHLY_MANUALS "/quenchly-menubar.1"), "It plays\n", "\nin turn"),
              names);
    const std::string help = testing::runProgram(QUENCHLY_MENUBAR_PATH, {"--help"}).output;
    EXPECT_NE(withoutBreaks(help).find("plays " + names + " in turn"), std::string::npos);
}

/// The first lines that a shell's command prints, on a home folder of its own and with the programs on PATH.
std::string firstLines(const std::string& command, int lines)
{
    const testing::ScratchFolder home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), QStringLiteral(QUENCHLY_PROGRAMS));
    QProcess shell;
    shell.setProcessEnvironment(environment);
    const std::string line = "exec " + command + " --home '" + home.path().string() + "'";
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromStdString(line)});
    std::string text;
    for (int i = 0; i < lines; ++i) {
        while (!shell.canReadLine() && shell.waitForReadyRead(testing::patience)) {
        }
        text += shell.readLine().toStdString();
    }
    EXPECT_EQ(shell.state(), QProcess::Running) << command << shell.readAllStandardError().toStdString();
    shell.kill();
    shell.waitForFinished(testing::patience);
    return text;
}

TEST(ManualPages, GiveStatusBarsCommandsThatPrintWhatTheseRead)
{
    const std::string page = testing::contentOf(QUENCHLY_MANUALS "/quenchly-status.1");
    const char* forBars = "[\" (](quenchly-status(?: --[a-z]+(?:=\\w+)?)* --watch(?: --[a-z]+(?:=\\w+)?)*)";
    const std::set<std::string> commands = allOf(page.substr(page.find(".Sh EXAMPLES")), forBars);
    EXPECT_EQ(commands, allOf(testing::contentOf(QUENCHLY_ROOT "/README.md"), forBars));

    const std::string i3bar = "quenchly-status --watch --bar=i3bar";
    const std::string plain = "quenchly-status --watch --plain";
    const std::string waybar = "quenchly-status --bar --watch";
    ASSERT_EQ(commands, (std::set{i3bar, plain, waybar}));
    EXPECT_EQ(firstLines(plain, 1), "Checks not set up  Checking in a moment.\n");
    EXPECT_EQ(nlohmann::json::parse(firstLines(waybar, 1))["class"], "waiting");
    EXPECT_EQ(firstLines(i3bar, 3),
              "{\"version\":1}\n[\n[{\"full_text\":\"Checks not set up  Checking in a moment.\"}]\n");
}

INSTANTIATE_TEST_SUITE_P(
    All, ManualPage,
    ::testing::Values(Manual{"quenchly-menubar", QUENCHLY_MENUBAR_PATH, QUENCHLY_MANUALS "/quenchly-menubar.1"},
                      Manual{"quenchly-status", QUENCHLY_STATUS_PATH, QUENCHLY_MANUALS "/quenchly-status.1"}),
    [](const auto& manual) { return std::string(manual.param.name).substr(std::string("quenchly-").size()); });

}  // namespace
}  // namespace quenchly
