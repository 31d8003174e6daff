#include "meter_bar.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>
#include <QTest>
#include <vector>

#include "panel_colors.h"

namespace quenchly {
namespace {

constexpr int barWidth = 200;
const QColor blue(0x4E, 0x93, 0xC6);

class MeterBarTest : public ::testing::Test {
protected:
    MeterBarTest()
    {
        bar.setFixedWidth(barWidth);
        bar.setAccent(blue);
    }

    void open()
    {
        bar.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    }

    /// How far along its middle line the bar is in the accent's colour, in points.
    double paintedWidth()
    {
        const QImage image = bar.grab().toImage();
        int filled = 0;
        for (int x = 0; x < image.width(); ++x)
            filled += image.pixelColor(x, image.height() / 2).blue() > 120 ? 1 : 0;
        return filled / image.devicePixelRatio();
    }

    MeterBar bar;
};

TEST_F(MeterBarTest, AHiddenBarJumps)
{
    bar.setFill(40);
    EXPECT_FALSE(bar.isMoving());
    EXPECT_EQ(bar.shownFill(), 40);
}

TEST_F(MeterBarTest, AnEmptyBarHasALineAroundIt)
{
    const QImage image = bar.grab().toImage();
    for (const int y : {0, image.height() - 1})
        EXPECT_EQ(image.pixelColor(image.width() / 2, y), PanelColors::line) << y;
    EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), PanelColors::track);
}

TEST_F(MeterBarTest, TheLineIsWholeAboveAndBelowAtFractionalScales)
{
    for (const double scale : {1.25, 1.5, 1.75}) {
        for (int top = 0; top < 8; ++top) {
            QWidget window;
            window.setStyleSheet(QStringLiteral("background: black"));
            window.resize(barWidth, 30);
            auto* empty = new MeterBar(&window);
            empty->setGeometry(0, top, barWidth, MeterBar::barHeight);
            QImage picture((QSizeF(window.size()) * scale).toSize(), QImage::Format_RGB32);
            picture.setDevicePixelRatio(scale);
            picture.fill(Qt::black);
            window.render(&picture);
            std::vector<QColor> rows;
            for (int y = 0; y < picture.height(); ++y)
                if (picture.pixelColor(picture.width() / 2, y) != Qt::black)
                    rows.push_back(picture.pixelColor(picture.width() / 2, y));
            ASSERT_FALSE(rows.empty());
            EXPECT_NEAR(rows.front().red(), PanelColors::line.red(), 3) << scale << " at " << top;
            EXPECT_NEAR(rows.back().red(), PanelColors::line.red(), 3) << scale << " at " << top;
        }
    }
}

TEST_F(MeterBarTest, OnOpeningItStandsAtItsValue)
{
    bar.setFill(40);
    open();
    EXPECT_FALSE(bar.isMoving());
    EXPECT_NEAR(paintedWidth(), 80, 1);
}

TEST_F(MeterBarTest, AnOpenBarMovesToANewValueAndRestsThere)
{
    bar.setFill(10);
    open();
    bar.setFill(90);
    EXPECT_TRUE(bar.isMoving());
    EXPECT_NEAR(bar.shownFill(), 10, 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar.shownFill() > 30 && bar.shownFill() < 89; }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !bar.isMoving(); }));
    EXPECT_EQ(bar.shownFill(), 90);
    EXPECT_NEAR(paintedWidth(), 180, 1);
}

TEST_F(MeterBarTest, TheSameValueMovesNothing)
{
    bar.setFill(30);
    open();
    bar.setFill(30);
    EXPECT_FALSE(bar.isMoving());
}

TEST_F(MeterBarTest, HiddenOnItsWayItStopsAtTheEnd)
{
    open();
    bar.setFill(90);
    ASSERT_TRUE(bar.isMoving());
    bar.hide();
    EXPECT_FALSE(bar.isMoving());
    EXPECT_EQ(bar.shownFill(), 90);
}

TEST_F(MeterBarTest, ANewValueOnTheWayGoesOnFromWhereItIs)
{
    open();
    bar.setFill(90);
    ASSERT_TRUE(QTest::qWaitFor([this] { return bar.shownFill() > 20; }));
    const double before = bar.shownFill();
    bar.setFill(5);
    EXPECT_EQ(bar.shownFill(), before);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !bar.isMoving(); }));
    EXPECT_EQ(bar.shownFill(), 5);
}

TEST_F(MeterBarTest, AFullBarIsFullAndAnEmptyOneIsEmpty)
{
    open();
    EXPECT_EQ(paintedWidth(), 0);
    bar.setFill(100);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !bar.isMoving(); }));
    EXPECT_EQ(paintedWidth(), barWidth);
}

TEST_F(MeterBarTest, AssistiveTechnologyReadsTheFillAtOnce)
{
    open();
    bar.setFill(72.6);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::ProgressBar);
    ASSERT_NE(accessible->valueInterface(), nullptr);
    EXPECT_EQ(accessible->valueInterface()->currentValue().toInt(), 73);
}

}  // namespace
}  // namespace quenchly
