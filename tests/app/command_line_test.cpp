#include "command_line.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

CommandLine parse(QStringList arguments)
{
    arguments.prepend(QStringLiteral("quenchly-menubar"));
    return parseCommandLine(arguments);
}

QString s(const char* text)
{
    return QString::fromLatin1(text);
}

TEST(CommandLine, NothingAsksForNothing)
{
    const CommandLine line = parse({});
    EXPECT_EQ(line.error, QString());
    EXPECT_FALSE(line.home || line.language || line.headlessFolder || line.demo || line.showHelp || line.showVersion);
}

TEST(CommandLine, EveryOptionIsUnderstood)
{
    const CommandLine line = parse(
        {s("--home"), s("/h"), s("--language"), s("zhHant"), s("--headless"), s("/o"), s("--demo"), s("holding")});
    EXPECT_EQ(line.error, QString());
    EXPECT_EQ(line.home, s("/h"));
    EXPECT_EQ(line.language, AppLanguage::zhHant);
    EXPECT_EQ(line.headlessFolder, s("/o"));
    EXPECT_TRUE(line.demo);
    EXPECT_EQ(line.scenario, s("holding"));
    EXPECT_TRUE(parse({s("--help")}).showHelp);
    EXPECT_TRUE(parse({s("-h")}).showHelp);
    EXPECT_TRUE(parse({s("--version")}).showVersion);
}

TEST(CommandLine, TheScenarioOfADemoMayBeLeftOut)
{
    const CommandLine line = parse({s("--demo")});
    EXPECT_TRUE(line.demo);
    EXPECT_EQ(line.scenario, QString());
    EXPECT_EQ(line.error, QString());
}

TEST(CommandLine, WhatIsNotUnderstoodIsOneLineOfError)
{
    for (const QStringList& arguments :
         {QStringList{s("--bogus")}, QStringList{s("--home")}, QStringList{s("--language"), s("klingon")},
          QStringList{s("stray")}, QStringList{s("--demo"), s("a"), s("b")}, QStringList{s("--home"), s("")},
          QStringList{s("--headless="), s("x")}}) {
        const QString error = parse(arguments).error;
        EXPECT_FALSE(error.isEmpty()) << arguments.join(u' ').toStdString();
        EXPECT_FALSE(error.contains(u'\n')) << error.toStdString();
    }
}

TEST(CommandLine, TheHelpNamesEveryOption)
{
    for (const char* option :
         {"--home DIR", "--language CODE", "--headless DIR", "--demo [SCENARIO]", "--version", "--help"})
        EXPECT_TRUE(commandLineHelp().contains(s(option))) << option;
}

}  // namespace
}  // namespace quenchly
