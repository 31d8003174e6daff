#include "menu_bar_picture.h"

#include <gtest/gtest.h>

#include "menu_bar_content.h"
#include "scripted_system.h"

namespace quenchly {
namespace {

constexpr const char* freshState =
    R"({"lastCheck":"2026-03-01T11:59:30Z","lastMetrics":{"load1":1.6,"cpuCount":8,"swapPct":31,"swapUsedMB":2150}})";

TEST(MenuBarPictureTest, ThePictureHoldsGlyphAndWholeLabelAtEveryScale)
{
    testing::ScriptedSystem world;
    world.writeState("heat-state.json", freshState);
    const StateWatcher watcher(world.system());
    MenuBarExtraContent content = menuBarContent(watcher);
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QImage picture = menuBarPicture(content, scale);
        EXPECT_EQ(picture.height(), qRound(28 * scale));
        EXPECT_EQ(picture.pixel(qRound(14 * scale), picture.height() / 2), qRgb(78, 147, 198)) << scale;
    }
    const int width = menuBarPicture(content, 1).width();
    content.label += QStringLiteral(" and more");
    EXPECT_GT(menuBarPicture(content, 1).width(), width);
}

}  // namespace
}  // namespace quenchly
