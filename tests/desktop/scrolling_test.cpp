#include <gtest/gtest.h>

#include "application_on_desktop.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

/// Runs on a screen that is too low for the panel.
class ScrollingTest : public ApplicationOnDesktop {
protected:
    void SetUp() override
    {
        ApplicationOnDesktop::SetUp();
        showScenario("set-aside");
        openPanel();
    }

    /// The button of a row lies wholly inside the panel.
    bool isReached(const QString& row) const { return panel().contains(buttonNamed(row)); }
};

TEST_F(ScrollingTest, ThePanelStaysInsideTheWorkArea)
{
    EXPECT_TRUE(workArea().contains(panel()));
    EXPECT_FALSE(isReached(QStringLiteral("Quit Quenchly")));
}

TEST_F(ScrollingTest, TheWheelReachesTheLastRowAndTheFirst)
{
    turnWheel(panel().center(), 30);
    EXPECT_TRUE(waitFor([this] { return isReached(QStringLiteral("Quit Quenchly")); }));
    ASSERT_TRUE(screenRests());
    keepPicture(QStringLiteral("scrolled"));
    turnWheel(panel().center(), -30);
    EXPECT_TRUE(waitFor([this] { return isReached(QStringLiteral("Status, Help")); }));
}

TEST_F(ScrollingTest, TheKeysReachEveryRowAndBringItIntoView)
{
    for (const char* row :
         {"Acknowledge", "Acknowledge", "Acknowledge", "Clear all (3)", "Protection On", "Open at Login: On",
          "Live data", "Check for Updates...", "Report a problem", "Uninstall…", "Quit Quenchly", "Acknowledge"}) {
        press("Down");
        ASSERT_TRUE(waitFor([&] { return focused().name == QString::fromUtf8(row); })) << row;
        EXPECT_TRUE(waitFor([this] { return panel().contains(inPixels(tree().place(focused()))); })) << row;
    }
}

TEST_F(ScrollingTest, ThePageKeysScrollWhereverTheFocusIs)
{
    for (const char* focusKey : {"", "Down"}) {
        if (*focusKey != '\0')
            press(focusKey);
        press("Next");
        press("Next");
        EXPECT_TRUE(waitFor([this] { return isReached(QStringLiteral("Quit Quenchly")); })) << focusKey;
        press("Home");
        EXPECT_TRUE(waitFor([this] { return isReached(QStringLiteral("Status, Help")); })) << focusKey;
        press("End");
        EXPECT_TRUE(waitFor([this] { return isReached(QStringLiteral("Quit Quenchly")); })) << focusKey;
        press("Prior");
        press("Prior");
        EXPECT_TRUE(waitFor([this] { return isReached(QStringLiteral("Status, Help")); })) << focusKey;
    }
}

TEST_F(ScrollingTest, ThePanelOpensAtItsTopAgain)
{
    turnWheel(panel().center(), 30);
    ASSERT_TRUE(waitFor([this] { return isReached(QStringLiteral("Quit Quenchly")); }));
    press("Escape");
    ASSERT_TRUE(waitFor([this] { return panel().isEmpty(); }));
    // A press on the item just after the panel has closed counts as the one that closed it.
    ASSERT_TRUE(screenRests());
    openPanel();
    EXPECT_TRUE(isReached(QStringLiteral("Status, Help")));
}

TEST_F(ScrollingTest, TabBringsTheLastControlIntoView)
{
    press("shift+Tab");
    ASSERT_TRUE(waitFor([this] { return !focused().path.isEmpty(); }));
    EXPECT_EQ(focused().name, QStringLiteral("Help"));
    EXPECT_TRUE(waitFor([this] { return panel().contains(inPixels(tree().place(focused()))); }));
    EXPECT_TRUE(isReached(QStringLiteral("Quit Quenchly")));
}

}  // namespace
}  // namespace quenchly
