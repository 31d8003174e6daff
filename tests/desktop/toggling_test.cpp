#include <gtest/gtest.h>

#include <QRasterWindow>
#include <QTest>

#include "application_on_desktop.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

constexpr int gaps[] = {20, 120, 240, 500};  // milliseconds
constexpr int observation = 300;             // milliseconds

/// Presses on the item one after another, as quick as a person can and quicker.
class TogglingTest : public ApplicationOnDesktop {
protected:
    void SetUp() override
    {
        ApplicationOnDesktop::SetUp();
        showScenario("calm");
        icon = restingIcon().center();
    }

    bool panelCloses() const
    {
        return waitFor([this] { return hasWindows(0); });
    }

    bool panelStaysClosed() const
    {
        return !QTest::qWaitFor([this] { return !hasWindows(0); }, observation);
    }

    bool panelOpensAndStays() const
    {
        return waitFor([this] { return hasWindows(1); }) &&
               !QTest::qWaitFor([this] { return !hasWindows(1); }, observation);
    }

    /// Closes it by Escape, so that the next round begins with a closed panel, and what closed it was no press.
    void expectPanelOpensAndCloseIt()
    {
        EXPECT_TRUE(panelOpensAndStays());
        moveTo(idlePosition());
        waitUntilActive();
        press("Escape");
        ASSERT_TRUE(panelCloses());
    }

    QPoint icon;
};

TEST_F(TogglingTest, ThePressThatClosesThePanelDoesNotOpenItAgain)
{
    for (int round = 0; round < 3; ++round) {
        openPanel();
        click(icon);
        ASSERT_TRUE(panelCloses());
        EXPECT_TRUE(panelStaysClosed());
    }
}

TEST_F(TogglingTest, APressSoonAfterTheOneThatClosedThePanelOpensIt)
{
    for (const int gap : gaps) {
        SCOPED_TRACE(gap);
        openPanel();
        clickTwice(icon, gap);
        expectPanelOpensAndCloseIt();
    }
}

TEST_F(TogglingTest, APressSoonAfterEscapeOpensThePanel)
{
    for (const int gap : gaps) {
        SCOPED_TRACE(gap);
        // The pointer stays on the item; coming back to it would bring up the bar's tooltip, which takes a press.
        click(icon);
        waitUntilActive();
        press("Escape");
        ASSERT_TRUE(panelCloses());
        QTest::qWait(gap);
        click(icon);
        expectPanelOpensAndCloseIt();
    }
}

TEST_F(TogglingTest, APressSoonAfterOneOutsideOpensThePanel)
{
    QRasterWindow other;
    other.setGeometry(100, 200, 300, 200);
    other.show();
    ASSERT_TRUE(waitFor([&] { return other.isExposed(); }));
    for (const int gap : gaps) {
        SCOPED_TRACE(gap);
        openPanel();
        click(other.geometry().center());
        ASSERT_TRUE(panelCloses());
        QTest::qWait(gap);
        click(icon);
        expectPanelOpensAndCloseIt();
    }
}

}  // namespace
}  // namespace quenchly
