#include "text_lines.h"

#include <gtest/gtest.h>

#include <QAbstractTextDocumentLayout>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextOption>

#include "text_label.h"

namespace quenchly {
namespace {

class TextLinesTest : public ::testing::Test {
protected:
    static QString joined(const TextLines::Broken& broken) { return broken.lines.join(u'|'); }

    /// As tooltips wrap.
    static QTextOption wordWrap()
    {
        QTextOption option;
        option.setWrapMode(QTextOption::WordWrap);
        return option;
    }

    QFont font = panelFont(14);
    double digitWidth = TextLines::width(QStringLiteral("0"), font);
};

TEST_F(TextLinesTest, EveryDigitIsEquallyWide)
{
    for (const QString& family : QFontDatabase::families()) {
        font.setFamily(family);
        const double zeros = TextLines::width(QStringLiteral("00.00%"), font);
        for (const char* figure : {"11.11%", "18.74%", "99.61%"})
            EXPECT_NEAR(TextLines::width(QLatin1String(figure), font), zeros, 0.05) << qPrintable(family) << figure;
    }
}

TEST_F(TextLinesTest, ATextBreaksBetweenWords)
{
    const double room = TextLines::width(QStringLiteral("one two"), font) + 1;
    const auto broken = TextLines::broken(QStringLiteral("one two three"), font, room, 9);
    EXPECT_EQ(joined(broken).toStdString(), "one two |three");
    EXPECT_FALSE(broken.cut);
}

TEST_F(TextLinesTest, AWordThatIsTooLongBreaksAnywhere)
{
    const auto broken = TextLines::broken(QString(30, u'm'), font, 100, 99);
    EXPECT_GT(broken.lines.size(), 2);
    EXPECT_EQ(broken.lines.join(QString()), QString(30, u'm'));
}

TEST_F(TextLinesTest, WhatDoesNotFitEndsInAnEllipsis)
{
    const auto broken = TextLines::broken(QStringLiteral("many words in a row ").repeated(20), font, 120, 2);
    EXPECT_EQ(broken.lines.size(), 2);
    EXPECT_TRUE(broken.cut);
    EXPECT_TRUE(broken.lines.last().endsWith(u'…'));
    EXPECT_LE(TextLines::width(broken.lines.last(), font), 120);
}

TEST_F(TextLinesTest, ACutFigureStaysWithinItsRoom)
{
    const double room = digitWidth * 6;
    const auto broken = TextLines::broken(QString(40, u'1'), font, room, 1);
    EXPECT_TRUE(broken.cut);
    EXPECT_LE(TextLines::width(broken.lines.first(), font), room);
}

TEST_F(TextLinesTest, LineEndsDivideParagraphs)
{
    const auto broken = TextLines::broken(QStringLiteral("one\n\ntwo"), font, 500, 99);
    EXPECT_EQ(joined(broken).toStdString(), "one||two");
}

TEST_F(TextLinesTest, NoLineEndsAtTheHyphenOfAShortPrefix)
{
    const QString text = QStringLiteral("gamitin ang “I-unload ang listed AI” para sa Sabay-sabay");
    const double longestWord = TextLines::width(QStringLiteral("Sabay-sabay"), font) + 1;
    bool brokenAtAnotherHyphen = false;
    for (double room = longestWord; room < TextLines::width(text, font); room += 1) {
        const auto broken = TextLines::broken(text, font, room, 99);
        EXPECT_EQ(broken.lines.join(QString()), text) << "nothing is added to the text";
        for (const QString& line : broken.lines) {
            EXPECT_FALSE(line.trimmed().endsWith(QStringLiteral("I-"))) << qPrintable(joined(broken));
            EXPECT_LE(TextLines::width(line.trimmed(), font), room + 0.5) << qPrintable(line);
            brokenAtAnotherHyphen |= line.endsWith(QStringLiteral("Sabay-"));
        }
    }
    EXPECT_TRUE(brokenAtAnotherHyphen) << "other words are still divided";
}

TEST_F(TextLinesTest, ATooltipDoesNotBreakAtTheHyphenOfAShortPrefixEither)
{
    QTextDocument tooltip;
    tooltip.setDefaultTextOption(wordWrap());
    tooltip.setHtml(plainToolTip(QStringLiteral("ang I-unload")));
    tooltip.setTextWidth(QFontMetricsF(tooltip.defaultFont()).horizontalAdvance(QStringLiteral("ang I-un")) +
                         2 * tooltip.documentMargin());
    const QTextLayout* layout = tooltip.firstBlock().layout();
    tooltip.documentLayout()->documentSize();
    ASSERT_EQ(layout->lineCount(), 2);
    EXPECT_EQ(layout->lineAt(0).textLength(), 4) << "the line ends after the word before";
}

TEST_F(TextLinesTest, AnEmptyTextHasNoWidth)
{
    EXPECT_EQ(TextLines::width(QString(), font), 0);
    EXPECT_FALSE(TextLines::broken(QString(), font, 100, 3).cut);
}

TEST_F(TextLinesTest, ALabelKeepsMarkupAsText)
{
    TextLabel label({.pixelSize = 14, .ink = Qt::white});
    label.showText("<b>bold</b> & <img src=x>");
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_GE(label.sizeHint().width(),
              static_cast<int>(TextLines::width(QStringLiteral("<b>bold</b> & <img src=x>"), font)));
}

TEST_F(TextLinesTest, OnlyACutLabelHasATooltipAndItIsPlain)
{
    TextLabel label({.pixelSize = 14, .ink = Qt::white});
    label.showText("<b>bold</b>");
    label.resize(label.sizeHint());
    EXPECT_EQ(label.toolTip(), QString());
    label.resize(20, label.height());
    EXPECT_EQ(label.toolTip().toStdString(), "<p>&lt;b&gt;bold&lt;/b&gt;</p>");
}

TEST_F(TextLinesTest, ATooltipBreaksAWordThatIsLongerThanALine)
{
    QTextDocument tooltip;
    tooltip.setDefaultTextOption(wordWrap());
    tooltip.setHtml(plainToolTip(QStringLiteral("ollama ") + QString(500, u'x')));
    tooltip.setTextWidth(400);
    EXPECT_LE(tooltip.idealWidth(), 400 + 2 * tooltip.documentMargin());
    EXPECT_EQ(tooltip.toPlainText().count(u'x'), 500);
}

TEST_F(TextLinesTest, AnEmptyLabelTakesNoRoom)
{
    TextLabel label({.pixelSize = 14, .ink = Qt::white});
    label.showText("text");
    EXPECT_FALSE(label.isHidden());
    label.showText("");
    EXPECT_TRUE(label.isHidden());
}

TEST_F(TextLinesTest, ALongerTextMakesALabelHigherUpToItsMostLines)
{
    TextLabel label({.pixelSize = 14, .ink = Qt::white, .mostLines = 3, .lineHeight = 1.5});
    label.showText("short");
    EXPECT_EQ(label.heightForWidth(200), 21);
    label.showText(std::string(600, 'm'));
    EXPECT_EQ(label.heightForWidth(200), 63);
}

}  // namespace
}  // namespace quenchly
