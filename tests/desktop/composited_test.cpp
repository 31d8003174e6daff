#include <gtest/gtest.h>

#include "application_on_desktop.h"
#include "compositing.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

/// Runs on a desktop with a compositing manager.
class CompositedTest : public ApplicationOnDesktop {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(waitFor(windowsMayBeTranslucent));
        ApplicationOnDesktop::SetUp();
    }
};

/// What lies behind a window shows in its corners and nowhere else on its edges.
void expectRoundCorners(const QImage& desktop, const QImage& window)
{
    const int right = window.width() - 1;
    const int bottom = window.height() - 1;
    const QPoint corners[] = {{0, 0}, {right, 0}, {0, bottom}, {right, bottom}};
    const QPoint edges[] = {{right / 2, 0}, {0, bottom / 2}, {right, bottom / 2}, {right / 2, bottom}};
    for (const QPoint corner : corners)
        EXPECT_EQ(window.pixel(corner), desktop.pixel(corner)) << corner.x() << " " << corner.y();
    for (const QPoint edge : edges)
        EXPECT_NE(window.pixel(edge), desktop.pixel(edge)) << edge.x() << " " << edge.y();
}

TEST_F(CompositedTest, ThePanelAndThePopoverHaveRoundCorners)
{
    showScenario("calm");
    const QImage desktop = screen();
    openPanel();
    ASSERT_TRUE(screenRests());
    keepPicture(QStringLiteral("panel"));
    const QImage withPanel = screen();
    expectRoundCorners(desktop.copy(panel()), withPanel.copy(panel()));

    clickButton(QStringLiteral("Help"));
    ASSERT_TRUE(waitFor([this] { return !popover().isEmpty(); }));
    ASSERT_TRUE(screenRests());
    keepPicture(QStringLiteral("popover"));
    expectRoundCorners(withPanel.copy(popover()), screen().copy(popover()));
}

}  // namespace
}  // namespace quenchly
