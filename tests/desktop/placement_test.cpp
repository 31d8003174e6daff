#include <gtest/gtest.h>

#include <cstdlib>
#include <algorithm>

#include "application_on_desktop.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

/// Runs on desktops with different bars, screens and scales.
class PlacementTest : public ApplicationOnDesktop {
protected:
    void openIn(const char* scenario)
    {
        showScenario(scenario);
        openPanel();
        ASSERT_TRUE(screenRests());
    }

    static int widestGap() { return inPixels(QRect(0, 0, 8, 8)).width(); }
};

TEST_F(PlacementTest, ThePanelIsAtTheItemAndInsideTheWorkArea)
{
    openIn("calm");
    keepPicture(QStringLiteral("placement"));
    EXPECT_TRUE(workArea().contains(panel()));
    EXPECT_EQ(panel().width(), inPixels(QRect(0, 0, 380, 1)).width());
    const QRect icon = iconOnBar();
    const bool atLeftEnd = panel().left() - workArea().left() <= widestGap();
    const bool atRightEnd = workArea().right() - panel().right() <= widestGap();
    const bool below = std::abs(panel().center().x() - icon.center().x()) <= iconSize;
    EXPECT_TRUE(below || (atLeftEnd && icon.left() < panel().center().x()) ||
                (atRightEnd && icon.right() > panel().center().x()));
    const int gap =
        icon.top() < workArea().top() ? panel().top() - workArea().top() : workArea().bottom() - panel().bottom();
    EXPECT_LE(gap, widestGap());
}

TEST_F(PlacementTest, ThePanelStaysInsideTheWorkAreaWhileItGrowsAndShrinks)
{
    openIn("calm");
    const QRect before = panel();
    playScenario("set-aside");
    ASSERT_TRUE(waitFor([this] { return shows(QStringLiteral("SET ASIDE (3)")); }));
    ASSERT_TRUE(screenRests());
    keepPicture(QStringLiteral("placement-set-aside"));
    EXPECT_GE(panel().height(), before.height());
    EXPECT_TRUE(workArea().contains(panel()));
    playScenario("calm");
    EXPECT_TRUE(waitFor([&] { return panel() == before; }));
}

TEST_F(PlacementTest, APopoverStaysOnTheScreen)
{
    openIn("calm");
    clickButton(QStringLiteral("Help"), 1);
    ASSERT_TRUE(waitFor([this] { return hasWindows(2); }));
    // The scan may still be changing the panel's height, which the window manager follows in two steps.
    EXPECT_TRUE(waitFor([this] {
        const std::vector<OpenWindow> open = windows();
        return open.size() == 2 && std::all_of(open.begin(), open.end(), [this](const OpenWindow& window) {
                   return workArea().contains(window.geometry);
               });
    }));
}

}  // namespace
}  // namespace quenchly
