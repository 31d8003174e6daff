#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "program.h"
#include "test_files.h"

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

INSTANTIATE_TEST_SUITE_P(
    All, ManualPage,
    ::testing::Values(Manual{"quenchly-menubar", QUENCHLY_MENUBAR_PATH, QUENCHLY_MANUALS "/quenchly-menubar.1"},
                      Manual{"quenchly-status", QUENCHLY_STATUS_PATH, QUENCHLY_MANUALS "/quenchly-status.1"}),
    [](const auto& manual) { return std::string(manual.param.name).substr(std::string("quenchly-").size()); });

}  // namespace
}  // namespace quenchly
