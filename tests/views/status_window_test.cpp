#include "status_window.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>

#include "scripted_system.h"
#include "state_watcher.h"

namespace quenchly {
namespace {

constexpr const char* markupState =
    R"({"lastCheck":"2026-03-01T11:59:30Z","story":{"text":"<b>bold</b> & <img src=x>","tone":"cool"},)"
    R"("lastMetrics":{"load1":1.6,"cpuCount":8,"swapPct":31,"swapUsedMB":2150}})";

class StatusWindowTest : public ::testing::Test {
protected:
    static QStringList visibleTexts(const StatusWindow& window)
    {
        QStringList texts;
        for (const QLabel* label : window.findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty())
                texts += label->text();
        return texts;
    }

    testing::ScriptedSystem world;
};

TEST_F(StatusWindowTest, ItShowsHeadlineProtectionFiguresAndDetail)
{
    world.writeState("heat-state.json", markupState);
    const StateWatcher watcher(world.system());
    StatusWindow window(watcher, StatusWindow::Role::popup);
    window.openAt({});
    EXPECT_EQ(visibleTexts(window).join(u'\n').toStdString(),
              "<b>bold</b> & <img src=x>\n"
              "Protection On\n"
              "load\n20%\n"
              "swap\n2.1 GB (31%)\n"
              "load 20% · swap 2.1 GB (31%). Machine is calm. AI keeps running as usual.");
}

TEST_F(StatusWindowTest, EveryTextIsPlain)
{
    const StateWatcher watcher(world.system());
    StatusWindow window(watcher, StatusWindow::Role::popup);
    const auto labels = window.findChildren<QLabel*>();
    int texts = 0;
    for (const QLabel* label : labels) {
        texts += label->textFormat() == Qt::PlainText ? 1 : 0;
        EXPECT_NE(label->textFormat(), Qt::RichText);
    }
    EXPECT_GE(texts, static_cast<int>(labels.size()) - 1) << "only the picture may guess its format";
}

TEST_F(StatusWindowTest, AnOpenWindowFollowsTheStateAndAClosedOneRests)
{
    world.writeState("heat-state.json", markupState);
    StateWatcher watcher(world.system());
    StatusWindow window(watcher, StatusWindow::Role::popup);
    window.openAt({});
    world.writeState("heat-state.json", R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})");
    watcher.reload();
    EXPECT_EQ(visibleTexts(window).first(), QStringLiteral("Overload. Watching."));
    window.close();
    const auto labels = window.findChildren<QLabel*>();
    world.writeState("heat-state.json", markupState);
    watcher.reload();
    for (const QLabel* label : labels)
        EXPECT_FALSE(label->text().startsWith(u'<')) << "a closed window was drawn anew";
    window.openAt({});
    EXPECT_EQ(visibleTexts(window).first(), QStringLiteral("<b>bold</b> & <img src=x>"));
}

TEST_F(StatusWindowTest, ItStaysInsideTheScreenWhereverItIsOpened)
{
    const StateWatcher watcher(world.system());
    StatusWindow window(watcher, StatusWindow::Role::popup);
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    for (const QPoint& at : {area.topLeft() + QPoint(1, 1), area.topRight(), area.bottomLeft(), area.bottomRight(),
                             QPoint(99'999, 99'999), QPoint(-5'000, 40)}) {
        window.openAt(at);
        EXPECT_TRUE(area.contains(window.geometry())) << at.x() << "," << at.y();
        window.close();
    }
}

TEST_F(StatusWindowTest, TheTextsHaveTheWholeWidthWhetherThereAreFiguresOrNot)
{
    for (const char* state : {"", markupState}) {
        world.writeState("heat-state.json", state);
        const StateWatcher watcher(world.system());
        StatusWindow window(watcher, StatusWindow::Role::popup);
        window.openAt({});
        const int textWidth = 380 - 2 * 16 - 22 - 12;
        EXPECT_EQ(window.findChildren<QLabel*>().last()->width(), textWidth) << state;
    }
}

TEST_F(StatusWindowTest, EscapeClosesIt)
{
    const StateWatcher watcher(world.system());
    StatusWindow window(watcher, StatusWindow::Role::ordinary);
    window.openAt({});
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(StatusWindowTest, LongTextsWrapAndGrowTheWindowDownwards)
{
    world.writeState("heat-state.json",
                     R"({"lastCheck":"2026-03-01T11:59:30Z","story":{"text":"short","tone":"cool"}})");
    StateWatcher watcher(world.system());
    StatusWindow window(watcher, StatusWindow::Role::popup);
    window.openAt({});
    const QSize before = window.size();
    world.writeState("heat-state.json", R"({"lastCheck":"2026-03-01T11:59:30Z","story":{"text":")" +
                                            std::string("many words in a row ") + std::string("many words in a row ") +
                                            std::string("many words in a row") + R"(","tone":"cool"}})");
    watcher.reload();
    EXPECT_EQ(window.width(), before.width());
    EXPECT_GT(window.height(), before.height());
}

}  // namespace
}  // namespace quenchly
