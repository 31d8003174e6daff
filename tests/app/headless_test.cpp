#include "headless.h"

#include <gtest/gtest.h>

#include <QImage>

#include "scripted_system.h"
#include "state_watcher.h"

namespace quenchly {
namespace {

class HeadlessTest : public ::testing::Test {
protected:
    QImage panel()
    {
        StateWatcher watcher(withoutSideEffects(world.system()));
        const QString folder = QString::fromStdString((world.scratch / "pictures").string());
        EXPECT_EQ(renderHeadless(watcher, folder).toStdString(), "");
        return QImage(folder + QStringLiteral("/panel.png"));
    }

    testing::ScriptedSystem world;
};

TEST_F(HeadlessTest, ThePictureOfThePanelHoldsWhatAScanOfThisMomentFinds)
{
    const QImage idle = panel();
    ASSERT_FALSE(idle.isNull());
    EXPECT_EQ(world.targets->scans, 1);
    EXPECT_EQ(panel(), idle) << "nothing else differs from picture to picture";
    world.targets->set({{"ollama", "R"}});
    EXPECT_NE(panel(), idle);
}

}  // namespace
}  // namespace quenchly
