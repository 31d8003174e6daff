#include <gtest/gtest.h>

#include <QFile>
#include <QXmlStreamReader>
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "program.h"

namespace quenchly {
namespace {

using testing::ProgramRun;

/// The texts of elements by the element's name and then by language, which is empty for English.
using Texts = std::map<std::string, std::map<std::string, std::vector<std::string>>>;

Texts metainfo()
{
    Texts texts;
    QFile file(QStringLiteral(QUENCHLY_METAINFO));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    std::string language;
    for (std::string element; !reader.atEnd(); reader.readNext()) {
        if (reader.isStartElement()) {
            element = reader.name().toString().toStdString();
            language = reader.attributes().value(QStringLiteral("xml:lang")).toString().toStdString();
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            texts[element][language].push_back(reader.text().toString().toStdString());
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return texts;
}

std::map<std::string, std::string> desktopEntry()
{
    std::map<std::string, std::string> values;
    QFile file(QStringLiteral(QUENCHLY_DESKTOP_ENTRY));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n'))
        values[line.section(u'=', 0, 0).toStdString()] = line.section(u'=', 1).toStdString();
    return values;
}

const std::vector<std::string> languages{"", "fil", "ja", "ko", "zh_CN", "zh_TW"};

TEST(Metainfo, IsValid)
{
    if (!testing::isInstalled(QUENCHLY_APPSTREAMCLI))
        GTEST_SKIP() << "appstreamcli is not installed";
    const ProgramRun run = testing::runProgram(QUENCHLY_APPSTREAMCLI, {"validate", "--no-net", QUENCHLY_METAINFO});
    EXPECT_EQ(run.exitStatus, 0);
    for (const char* finding : {"E: ", "W: "})
        EXPECT_EQ(run.output.find(finding), std::string::npos) << run.output;
}

TEST(Metainfo, SaysEverythingInEveryLanguage)
{
    const Texts texts = metainfo();
    for (const char* element : {"summary", "p", "li", "caption"}) {
        const auto& found = texts.at(element);
        EXPECT_EQ(found.size(), languages.size()) << element;
        for (const std::string& language : languages)
            EXPECT_EQ(found.at(language).size(), found.at("").size()) << element << " in " << language;
    }
}

TEST(Metainfo, AgreesWithTheDesktopEntry)
{
    const Texts texts = metainfo();
    const auto entry = desktopEntry();
    const QString fileName = QStringLiteral(QUENCHLY_DESKTOP_ENTRY).section(u'/', -1);
    EXPECT_EQ(texts.at("launchable").at(""), std::vector{fileName.toStdString()});
    EXPECT_EQ(texts.at("name").at(""), std::vector{entry.at("Name")});
    EXPECT_EQ(texts.at("icon").at(""), std::vector{entry.at("Icon")});
    std::string categories;
    for (const std::string& category : texts.at("category").at(""))
        categories += category + ";";
    EXPECT_EQ(categories, entry.at("Categories"));
    for (const std::string& language : languages)
        EXPECT_EQ(texts.at("summary").at(language),
                  std::vector{entry.at(language.empty() ? "Comment" : "Comment[" + language + "]")});
}

TEST(Metainfo, ProvidesTheProgramsThatAreBuilt)
{
    const std::vector<std::string> programs = metainfo().at("binary").at("");
    for (const std::string& name : programs)
        EXPECT_TRUE(QFile::exists(QStringLiteral(QUENCHLY_PROGRAMS "/") + QString::fromStdString(name))) << name;
}

}  // namespace
}  // namespace quenchly
