#include <gtest/gtest.h>

#include <QRasterWindow>

#include "application_on_desktop.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

/// Where in an image there is something light.
QRect inkedPart(const QImage& image)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) > 128)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

class KeyboardTest : public ApplicationOnDesktop {
protected:
    void SetUp() override
    {
        ApplicationOnDesktop::SetUp();
        showScenario("calm");
    }

    bool waitForFocus(const QString& name) const
    {
        return waitFor([&] { return focused().name == name; });
    }

    bool waitForWindows(std::size_t count) const
    {
        return waitFor([&] { return hasWindows(count); });
    }
};

TEST_F(KeyboardTest, EscapeClosesThePopoverFirstAndThenThePanel)
{
    openPanel();
    clickButton(QStringLiteral("Help"));
    ASSERT_TRUE(waitForWindows(2));
    EXPECT_TRUE(screenRests());
    keepPicture(QStringLiteral("popover"));
    press("Escape");
    ASSERT_TRUE(waitForWindows(1));
    EXPECT_FALSE(panel().isEmpty());
    press("Escape");
    EXPECT_TRUE(waitForWindows(0));
}

TEST_F(KeyboardTest, ThePopoverShowsItsWholeText)
{
    openPanel();
    clickButton(QStringLiteral("Help"));
    ASSERT_TRUE(waitForWindows(2));
    ASSERT_TRUE(screenRests());
    const QRect text = inkedPart(screen().copy(popover().adjusted(1, 1, -1, -1)));
    // What would not fit into the label leaves a wide margin above and below it.
    const int widestMargin = 20;
    EXPECT_LT(text.top(), widestMargin);
    EXPECT_GT(text.bottom(), popover().height() - widestMargin);
    EXPECT_LE(popover().width(), 260);
}

TEST_F(KeyboardTest, APressBesideThePopoverClosesOnlyThePopover)
{
    openPanel();
    clickButton(QStringLiteral("Help"));
    ASSERT_TRUE(waitForWindows(2));
    click(panel().topLeft() + QPoint(8, 8));
    ASSERT_TRUE(waitForWindows(1));
    EXPECT_FALSE(panel().isEmpty());
}

TEST_F(KeyboardTest, APressOnAnotherWindowClosesThePanel)
{
    QRasterWindow other;
    other.setGeometry(100, 200, 300, 200);
    other.show();
    ASSERT_TRUE(waitFor([&] { return other.isExposed(); }));
    openPanel();
    click(other.geometry().center());
    EXPECT_TRUE(waitForWindows(0));
    EXPECT_EQ(application.state(), QProcess::Running);
}

TEST_F(KeyboardTest, TheFocusShowsWhereItIs)
{
    openPanel();
    ASSERT_TRUE(screenRests());
    const QImage before = screen();
    press("Tab");
    ASSERT_TRUE(waitFor([this] { return !focused().path.isEmpty(); }));
    const Accessible first = focused();
    const QRect place = inPixels(tree().place(first));
    EXPECT_TRUE(waitFor([&] { return screen().copy(place) != before.copy(place); })) << first.name.toStdString();
    press("Tab");
    ASSERT_TRUE(waitFor([&] { return !focused().path.isEmpty() && focused().path != first.path; }));
    EXPECT_TRUE(waitFor([&] { return screen().copy(place) == before.copy(place); })) << first.name.toStdString();
    EXPECT_TRUE(screenRests());
    keepPicture(QStringLiteral("focus-help"));
}

TEST_F(KeyboardTest, TabComesToEveryControlAndRoundAgain)
{
    openPanel();
    QStringList expected;
    for (const Accessible& object : tree().showing())
        if (object.role == Accessible::Role::pushButton)
            expected += object.path;
    QStringList visited;
    for (qsizetype i = 0; i <= expected.size(); ++i) {
        const QString before = focused().path;
        press("Tab");
        ASSERT_TRUE(waitFor([&] { return !focused().path.isEmpty() && focused().path != before; }));
        visited += focused().path;
    }
    EXPECT_EQ(visited.constLast(), visited.constFirst());
    visited.removeLast();
    EXPECT_EQ(visited, expected);
}

TEST_F(KeyboardTest, ArrowsReturnAndSpaceWorkTheRows)
{
    openPanel();
    press("Down");
    ASSERT_TRUE(waitForFocus(QStringLiteral("Protection On")));
    EXPECT_TRUE(screenRests());
    keepPicture(QStringLiteral("focus-row"));
    press("Return");
    EXPECT_TRUE(waitFor([this] { return toolRuns() == QStringList{QStringLiteral("disable")}; }));
    // The row keeps the focus through its change.
    ASSERT_TRUE(waitForFocus(QStringLiteral("Protection Off")));
    press("Down");
    ASSERT_TRUE(waitForFocus(QStringLiteral("Open at Login: On")));
    press("space");
    ASSERT_TRUE(waitForFocus(QStringLiteral("Open at Login: Off")));
    press("Right");
    ASSERT_TRUE(waitForFocus(QStringLiteral("Help")));
    press("Return");
    EXPECT_TRUE(waitForWindows(2));
    press("space");
    EXPECT_TRUE(waitForWindows(1));
    press("Up");
    EXPECT_TRUE(waitForFocus(QStringLiteral("Open at Login: Off")));
}

TEST_F(KeyboardTest, TheFocusGoesOnToTheNextEntryWhenOneIsAcknowledged)
{
    playScenario("set-aside");
    openPanel();
    ASSERT_TRUE(waitFor([this] { return shows(QStringLiteral("SET ASIDE (3)")); }));
    const QString acknowledge = QStringLiteral("Acknowledge");
    press("Down");
    ASSERT_TRUE(waitForFocus(acknowledge));
    const QString first = focused().path;
    press("Return");
    ASSERT_TRUE(waitFor([this] { return shows(QStringLiteral("SET ASIDE (2)")); }));
    ASSERT_TRUE(waitForFocus(acknowledge));
    EXPECT_NE(focused().path, first);
    press("Return");
    ASSERT_TRUE(waitFor([this] { return shows(QStringLiteral("SET ASIDE (1)")); }));
    EXPECT_TRUE(waitForFocus(acknowledge));
}

}  // namespace
}  // namespace quenchly
