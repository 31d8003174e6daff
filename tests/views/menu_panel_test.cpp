#include "menu_panel.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QCursor>
#include <QLabel>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <tuple>
#include <utility>

#include "action_row.h"
#include "help_icon.h"
#include "help_popover.h"
#include "l10n.h"
#include "menu_content_view.h"
#include "meter_bar.h"
#include "panel_colors.h"
#include "panel_controller.h"
#include "pill_button.h"
#include "recorded_tool.h"
#include "scripted_system.h"
#include "state_watcher.h"
#include "text_label.h"
#include "updater.h"

namespace quenchly {
namespace {

constexpr const char* calmState =
    R"({"lastCheck":"2026-03-01T11:59:30Z","story":{"text":"<b>bold</b> & <img src=x>","tone":"cool"},)"
    R"("lastMetrics":{"load1":1.6,"cpuCount":8,"swapPct":31,"swapUsedMB":2150}})";
constexpr const char* hotState = R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})";

std::string setAsideState(int count)
{
    std::string entries;
    for (int i = 0; i < count; ++i)
        entries += std::string(i > 0 ? "," : "") + R"({"id":"p)" + std::to_string(i) + R"(","cmd":"ollama runner )" +
                   std::to_string(i) + R"(","quarantinedAt":"2026-03-01T11:00:00Z"})";
    return R"({"lastCheck":"2026-03-01T11:59:30Z","quarantined":[)" + entries + "]}";
}

class MenuPanelTest : public ::testing::Test {
protected:
    void open(const std::string& state, MenuPanel::Role role = MenuPanel::Role::popup)
    {
        QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());  // it stays from test to test
        world.writeState("heat-state.json", state);
        panel.reset();
        controller.reset();
        System system = world.system();
        system.environment = tool.environment();
        watcher = std::make_unique<StateWatcher>(system);
        updater = std::make_unique<Updater>(system);
        controller = std::make_unique<PanelController>(*watcher, *updater);
        panel = std::make_unique<MenuPanel>(*controller, role);
        panel->openAt({});
        ASSERT_TRUE(QTest::qWaitForWindowExposed(panel.get()));
        panel->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel.get()));
    }

    void change(const std::string& state)
    {
        world.writeState("heat-state.json", state);
        watcher->reload();
    }

    QStringList texts() const
    {
        QStringList texts;
        for (const QLabel* label : panel->findChildren<QLabel*>())
            if (label->isVisible())
                texts += label->text();
        return texts;
    }

    /// What is visible, and where.
    std::vector<std::tuple<int, int, int, int, std::string>> places() const
    {
        std::vector<std::tuple<int, int, int, int, std::string>> places;
        for (QWidget* widget : panel->findChildren<QWidget*>()) {
            const QRect place(widget->mapTo(panel.get(), QPoint()), widget->size());
            if (widget->isVisible())
                places.emplace_back(place.y(), place.x(), place.height(), place.width(),
                                    widget->metaObject()->className());
        }
        std::sort(places.begin(), places.end());
        return places;
    }

    /// Where the rows of the actions stand, from top to bottom, and then the panel's height.
    std::vector<int> rowPlaces() const
    {
        std::vector<int> places;
        for (const ActionRow* row : panel->findChildren<ActionRow*>())
            if (row->isVisible())
                places.push_back(row->mapTo(panel.get(), QPoint()).y());
        std::sort(places.begin(), places.end());
        places.push_back(panel->height());
        return places;
    }

    void movePointerTo(QWidget* widget, QPoint place = {}) const
    {
        QTest::mouseMove(widget, place);
        QApplication::processEvents();
    }

    /// Somewhere above all rows.
    void movePointerAway() const { movePointerTo(panel.get(), QPoint(100, 60)); }

    template <class Button>
    Button* button(const char* text) const
    {
        for (Button* button : panel->findChildren<Button*>())
            if (button->isVisible() && button->text() == QString::fromUtf8(text))
                return button;
        return nullptr;
    }

    QList<HelpIcon*> helpIcons() const
    {
        QList<HelpIcon*> icons;
        for (HelpIcon* icon : panel->findChildren<HelpIcon*>())
            if (icon->isVisible())
                icons += icon;
        return icons;
    }

    QString focusText() const
    {
        const auto* button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
        return button != nullptr ? button->text() : QString();
    }

    void press(int key) const
    {
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* focus = panel->focusWidget() != nullptr ? panel->focusWidget() : panel.get();
        QTest::keyClick(popup != nullptr ? popup : focus, static_cast<Qt::Key>(key));
    }

    testing::ScriptedSystem world;
    testing::RecordedTool tool{world.scratch};
    std::unique_ptr<StateWatcher> watcher;
    std::unique_ptr<Updater> updater;
    std::unique_ptr<PanelController> controller;
    std::unique_ptr<MenuPanel> panel;
};

TEST_F(MenuPanelTest, ItShowsEverySectionAsPlainText)
{
    open(calmState);
    for (const char* text : {"<b>bold</b> & <img src=x>", "Protection On", "load", "20%", "swap", "2.1 GB", "31%",
                             "Protection applies to", "Ollama", "llama.cpp", "Updates not configured yet"})
        EXPECT_TRUE(texts().contains(QString::fromUtf8(text))) << text;
    for (const QLabel* label : panel->findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
    for (const char* row : {"Protection On", "Open at Login: On", "Live data", "Check for Updates...",
                            "Report a problem", "Uninstall…", "Quit Quenchly"})
        EXPECT_NE(button<ActionButton>(row), nullptr) << row;
}

TEST_F(MenuPanelTest, AnOpenPanelFollowsTheStateAndAClosedOneRests)
{
    open(calmState);
    change(hotState);
    EXPECT_TRUE(texts().contains(QStringLiteral("Overload. Watching.")));
    panel->close();
    change(calmState);
    const auto labels = panel->findChildren<QLabel*>();
    EXPECT_TRUE(std::none_of(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->text().startsWith(u'<');
    })) << "a closed panel was filled";
    panel->openAt({});
    EXPECT_TRUE(texts().contains(QStringLiteral("<b>bold</b> & <img src=x>"))) << "not in the first frame";
}

TEST_F(MenuPanelTest, ItCountsAsShownWhileItCanBeSeen)
{
    open(calmState, MenuPanel::Role::ordinary);
    const auto scanned = [this](int times) {
        return QTest::qWaitFor([&] { return world.targets->scans == times; }, 60'000);
    };
    ASSERT_TRUE(scanned(1));
    const std::pair<std::function<void()>, std::function<void()>> waysToHide[] = {
        {[this] { panel->close(); }, [this] { panel->openAt({}); }},
        {[this] { panel->showMinimized(); }, [this] { panel->showNormal(); }},
        {[this] { panel.reset(); },
         [this] {
             panel = std::make_unique<MenuPanel>(*controller, MenuPanel::Role::ordinary);
             panel->openAt({});
         }},
    };
    QSignalSpy changes(controller.get(), &PanelController::changed);
    int scans = 1;
    for (const auto& [hide, show] : waysToHide) {
        hide();
        QApplication::processEvents();  // the platform confirms that a window is minimized
        changes.clear();
        change(hotState);
        change(calmState);
        EXPECT_EQ(changes.count(), 0);
        EXPECT_EQ(world.targets->scans, scans);
        show();
        EXPECT_TRUE(scanned(++scans));
    }
}

TEST_F(MenuPanelTest, TheButtonsOfTheSetAsideProcessesAcknowledgeTheirOwnAndAll)
{
    world.scratch.makeLink("program/quenchly", testing::RecordedTool::program());
    open(setAsideState(2));
    const auto idle = [this] { return !watcher->ackBusy(); };
    QTest::mouseClick(button<PillButton>("Acknowledge"), Qt::LeftButton);
    EXPECT_NE(button<PillButton>("Acknowledging…"), nullptr);
    ASSERT_TRUE(QTest::qWaitFor(idle, 60'000));
    QTest::mouseClick(button<PillButton>("Clear all (2)"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor(idle, 60'000));
    EXPECT_EQ(tool.runs(), (std::vector<std::vector<std::string>>{
                               {"quarantine", "ack", "p0"}, {"quarantine", "ack", "p0"}, {"quarantine", "ack", "p1"}}));
}

TEST_F(MenuPanelTest, ALongNameLeavesTheStateOfATargetWhole)
{
    const std::string name = "custom." + std::string(200, 'm');
    world.targets->set({{name, "T"}});
    open(R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true,"paused":[{"label":")" + name + R"(","pid":1}]})");
    ASSERT_TRUE(QTest::qWaitFor([this] { return texts().contains(QStringLiteral("Eased back")); }));
    for (const QLabel* label : panel->findChildren<QLabel*>()) {
        if (label->isVisible() && label->text() == QStringLiteral("Eased back")) {
            EXPECT_GE(label->width(), label->sizeHint().width());
        }
    }
}

TEST_F(MenuPanelTest, ItsHeightFollowsItsContent)
{
    open(setAsideState(3));
    const int withSetAside = panel->height();
    change(setAsideState(0));
    const int without = panel->height();
    EXPECT_LT(without, withSetAside);
    change(setAsideState(3));
    EXPECT_EQ(panel->height(), withSetAside);
    EXPECT_EQ(panel->width(), 380);
}

TEST_F(MenuPanelTest, AChangeIsLaidOutAsIfItHadBeenThereFromTheStart)
{
    const std::string manyLines = std::string(R"({"lastCheck":"2026-03-01T11:59:30Z","story":{"text":")") +
                                  "Many words that take several lines of the header. " +
                                  "Many words that take several lines of the header." +
                                  R"(","tone":"cool"},"memoryReliefTip":"Rows come and go."})";
    const std::vector<std::string> states{calmState,        hotState, setAsideState(3), calmState, manyLines,
                                          setAsideState(9), hotState, setAsideState(1), manyLines, calmState};
    const auto scanned = [this] { return texts().contains(QStringLiteral("Idle")); };
    std::vector<std::vector<std::tuple<int, int, int, int, std::string>>> fromTheStart;
    for (const std::string& state : states) {
        open(state);
        ASSERT_TRUE(QTest::qWaitFor(scanned));
        fromTheStart.push_back(places());
        panel.reset();
    }
    open(states.front());
    ASSERT_TRUE(QTest::qWaitFor(scanned));
    for (std::size_t i = 0; i < states.size(); ++i) {
        change(states[i]);
        EXPECT_EQ(places(), fromTheStart[i]) << states[i];
    }
}

TEST_F(MenuPanelTest, ItStaysInsideTheWorkAreaWhereverItIsOpenedAndHoweverItGrows)
{
    open(calmState);
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    for (const QPoint& at : {area.topLeft() + QPoint(1, 1), area.topRight(), area.bottomLeft(), area.bottomRight(),
                             QPoint(99'999, 99'999), QPoint(-5'000, 40)}) {
        change(calmState);
        panel->openAt(at);
        EXPECT_TRUE(area.contains(panel->geometry())) << at.x() << "," << at.y();
        change(setAsideState(4));
        EXPECT_TRUE(area.contains(panel->geometry())) << at.x() << "," << at.y();
        panel->close();
    }
}

TEST_F(MenuPanelTest, AnActionThatComesWaitsUntilThePanelOpensAgain)
{
    open(hotState);
    const std::vector<int> places = rowPlaces();
    change(R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true,"memoryReliefTip":"Unload something."})");
    EXPECT_EQ(rowPlaces(), places);
    panel->close();
    panel->openAt({});
    EXPECT_EQ(rowPlaces().size(), places.size() + 1) << "Unload listed AI";
}

TEST_F(MenuPanelTest, NoRowMovesWhileChecksComeAndGoAndTargetsChangeTheirState)
{
    using State = TargetRow::State;
    open(calmState);
    const std::vector<int> places = rowPlaces();
    const std::pair<const char*, State> processes[] = {
        {"", State::unknown}, {"R", State::running}, {"T", State::paused}};
    const std::string metrics = R"("lastMetrics":{"load1":9,"cpuCount":8,"swapPct":3,"swapUsedMB":99})";
    int second = 0;
    for (const char* rest : {"", R"(,"hot":true)", R"(,"hot":true,"slowActive":false,"lastRestoreAt":"yesterday")"}) {
        for (const char* time : {"2026-03-01T11:59:", "2026-03-01T11:40:"}) {
            for (const auto& [process, state] : processes) {
                world.targets->set({});
                if (state != State::unknown)
                    world.targets->set({{"ollama", process}});
                change(std::string(R"({"lastCheck":")") + time + std::to_string(10 + second++) + "Z\"," + metrics +
                       rest + "}");
                ASSERT_TRUE(
                    QTest::qWaitFor([&] { return controller->content().targets.rows.at(0).state == state; }, 60'000));
                EXPECT_EQ(rowPlaces(), places) << time << rest << process;
            }
        }
    }
    change(R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true,"paused":[{"label":"ollama","pid":1}],)" + metrics + "}");
    EXPECT_TRUE(
        texts().contains(QStringLiteral("Holding until pressure drops. The machine is not fighting the AI for CPU.")));
    EXPECT_EQ(rowPlaces(), places);
    watcher->beginCheckNow();
    watcher->reload();
    ASSERT_TRUE(texts().contains(QStringLiteral("Checking now")));
    EXPECT_EQ(rowPlaces(), places);
}

TEST_F(MenuPanelTest, RowsThatComeAndGoWaitUntilThePointerHasLeftTheRows)
{
    open(setAsideState(1));
    movePointerTo(button<ActionButton>("Live data"));
    const std::vector<int> places = rowPlaces();
    for (const std::string& state : {setAsideState(0), setAsideState(3), setAsideState(0)}) {
        change(state);
        EXPECT_EQ(rowPlaces(), places) << state;
    }
    PillButton* gone = button<PillButton>("Acknowledge");
    ASSERT_NE(gone, nullptr) << "it keeps its place";
    EXPECT_FALSE(gone->isEnabled());
    movePointerTo(button<ActionButton>("Quit Quenchly"));
    EXPECT_EQ(rowPlaces(), places) << "from one row to another";
    movePointerAway();
    EXPECT_NE(rowPlaces(), places);
    EXPECT_EQ(button<PillButton>("Acknowledge"), nullptr);
}

TEST_F(MenuPanelTest, APanelThatOpensUnderThePointerShowsTheRowsOfNow)
{
    open(setAsideState(1));
    movePointerTo(button<ActionButton>("Live data"));
    change(setAsideState(3));
    EXPECT_EQ(button<PillButton>("Clear all (3)"), nullptr);
    panel->close();
    panel->openAt({});
    EXPECT_NE(button<PillButton>("Clear all (3)"), nullptr);
    change(setAsideState(2));
    EXPECT_NE(button<PillButton>("Clear all (2)"), nullptr) << "where the pointer was does not count any more";
}

TEST_F(MenuPanelTest, AHeadlineThatWasCutForTheRowsIsWholeWhenThePanelOpensAgain)
{
    open(calmState);
    const std::vector<int> places = rowPlaces();
    const char* words = "Many words that take several lines of the header. Many words that take several lines of it.";
    change(std::string(R"({"lastCheck":"2026-03-01T11:59:30Z","story":{"text":")") + words +
           R"(","tone":"cool"},"lastMetrics":{"load1":1,"cpuCount":8}})");
    EXPECT_EQ(rowPlaces(), places);
    panel->close();
    panel->openAt({});
    EXPECT_GT(panel->height(), places.back());
}

TEST_F(MenuPanelTest, WhatHasNoRoomBelowTheHeadlineIsInItsTooltipAndDescription)
{
    open(R"({"lastCheck":"2026-03-01T11:59:30Z","lastMetrics":{"load1":1.6,"cpuCount":8,"swapPct":31}})");
    const QString headline = QStringLiteral("Machine is calm. AI keeps running as usual.");
    const QString detail = QString::fromStdString(watcher->status().detail.utf8());
    ASSERT_TRUE(detail.contains(headline));
    EXPECT_FALSE(texts().contains(detail)) << "it would say it twice";
    for (const QLabel* label : panel->findChildren<QLabel*>()) {
        if (label->isVisible() && label->text() == headline) {
            EXPECT_EQ(label->accessibleDescription(), detail);
            EXPECT_TRUE(label->toolTip().contains(headline));
        }
    }
    change(R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true,"lastMetrics":{"load1":9,"cpuCount":8,"swapPct":31}})");
    EXPECT_TRUE(texts().contains(QString::fromStdString(watcher->status().detail.utf8())));
}

TEST_F(MenuPanelTest, ALongDetailEndsAfterTwoLinesAndIsWholeInItsTooltip)
{
    std::filesystem::remove(world.scratch / "Library/LaunchAgents/com.brindlemoor.quenchly.plist");
    open(calmState);
    const QString detail = QString::fromStdString(watcher->status().detail.utf8());
    ASSERT_TRUE(detail.startsWith(QStringLiteral("The menu bar icon is running")));
    for (const QLabel* label : panel->findChildren<QLabel*>()) {
        if (label->text() == detail) {
            EXPECT_LE(label->height(), 2 * 1.35 * 14 + 1);
            EXPECT_EQ(label->accessibleDescription(), detail);
            EXPECT_FALSE(label->toolTip().isEmpty());
        }
    }
}

TEST_F(MenuPanelTest, AThousandEntriesAreFourRowsAndACount)
{
    open(setAsideState(1000));
    int rows = 0;
    for (const PillButton* button : panel->findChildren<PillButton*>())
        rows += button->isVisible() && button->text() == QStringLiteral("Acknowledge") ? 1 : 0;
    EXPECT_EQ(rows, 4);
    EXPECT_NE(button<PillButton>("Clear all (1000)"), nullptr);
}

TEST_F(MenuPanelTest, WithoutAToolTheRowsThatNeedItAreDisabledAndTheirHelpIsNot)
{
    open(calmState);
    ActionButton* protection = button<ActionButton>("Protection On");
    ASSERT_NE(protection, nullptr);
    EXPECT_FALSE(protection->isEnabled());
    EXPECT_TRUE(button<ActionButton>("Live data")->isEnabled());
    HelpIcon* help = protection->parentWidget()->findChild<HelpIcon*>();
    QTest::mouseClick(help, Qt::LeftButton);
    EXPECT_TRUE(help->isPopoverOpen());
}

TEST_F(MenuPanelTest, OpeningReadsTheLoginItemAgain)
{
    open(calmState);
    panel->close();
    world.loginItem->now = LoginItem::Status::notRegistered;
    panel->openAt({});
    EXPECT_NE(button<ActionButton>("Open at Login: Off"), nullptr);
}

TEST_F(MenuPanelTest, AMinimizedWindowRestsAndCatchesUpWhenItIsBack)
{
    open(calmState, MenuPanel::Role::ordinary);
    panel->showMinimized();
    const QStringList before = texts();
    change(setAsideState(1));
    EXPECT_EQ(texts(), before);
    panel->showNormal();
    EXPECT_NE(button<PillButton>("Acknowledge"), nullptr);
}

TEST_F(MenuPanelTest, RowsThatShowSomethingElseCloseThePanelFirst)
{
    open(calmState);
    bool wasOpen = true;
    world.desktop.duringAlert = [&](const Alert&) { wasOpen = panel->isVisible(); };
    QTest::mouseClick(button<ActionButton>("Check for Updates..."), Qt::LeftButton);
    ASSERT_EQ(world.desktop.alerts.size(), 1u);
    EXPECT_FALSE(wasOpen);
}

TEST_F(MenuPanelTest, AnOrdinaryWindowStaysBesideWhatARowShows)
{
    open(calmState, MenuPanel::Role::ordinary);
    QTest::mouseClick(button<ActionButton>("Check for Updates..."), Qt::LeftButton);
    EXPECT_EQ(world.desktop.alerts.size(), 1u);
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(MenuPanelTest, EscapeClosesThePopoverAndThenThePanel)
{
    open(calmState);
    HelpIcon* help = helpIcons().constFirst();
    QTest::mouseClick(help, Qt::LeftButton);
    ASSERT_TRUE(help->isPopoverOpen());
    press(Qt::Key_Escape);
    EXPECT_FALSE(help->isPopoverOpen());
    EXPECT_TRUE(panel->isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(MenuPanelTest, AnotherWindowThatTakesTheFocusClosesThePanel)
{
    open(calmState);
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !panel->isVisible(); }));
}

TEST_F(MenuPanelTest, AFocusThatComesBackAtOnceLeavesThePanelOpen)
{
    open(calmState);
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    panel->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel.get()));
    EXPECT_FALSE(QTest::qWaitFor([this] { return !panel->isVisible(); }, 300));
}

TEST_F(MenuPanelTest, EachHelpIconOpensItsOwnPopover)
{
    open(calmState);
    HelpIcon* first = helpIcons().constFirst();
    HelpIcon* second = helpIcons().constLast();
    first->click();
    EXPECT_TRUE(first->isPopoverOpen());
    EXPECT_FALSE(second->isPopoverOpen());
    first->click();
    EXPECT_FALSE(first->isPopoverOpen());
}

TEST_F(MenuPanelTest, AHelpIconThatGoesAwayTakesItsPopoverAlong)
{
    open(setAsideState(1));
    HelpIcon* help = button<PillButton>("Acknowledge")->parentWidget()->findChild<HelpIcon*>();
    help->click();
    ASSERT_TRUE(help->isPopoverOpen());
    change(setAsideState(0));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(MenuPanelTest, ALongHelpTextWrapsAndIsWholeOnTheScreen)
{
    open(calmState);
    for (HelpIcon* help : helpIcons()) {
        help->click();
        const auto* popover = help->findChild<HelpPopover*>();
        ASSERT_NE(popover, nullptr);
        EXPECT_LE(popover->width(), 260);
        const auto* text = popover->findChild<QLabel*>();
        EXPECT_GT(text->height(), 30);
        EXPECT_GE(text->height(), text->heightForWidth(text->width())) << "cut off";
        EXPECT_TRUE(help->screen()->availableGeometry().contains(popover->geometry()));
        help->click();
    }
}

TEST_F(MenuPanelTest, APopoverCoversNothingOfTheRowOrMeterThatItExplains)
{
    open(setAsideState(2));
    for (HelpIcon* help : helpIcons()) {
        help->click();
        const auto* popover = help->findChild<HelpPopover*>();
        ASSERT_NE(popover, nullptr);
        const QWidget* explained = help->parentWidget();
        const QRect place(explained->mapToGlobal(QPoint()), explained->size());
        EXPECT_FALSE(popover->geometry().intersects(place)) << explained->metaObject()->className();
        help->click();
    }
}

TEST_F(MenuPanelTest, ATooltipHasThePanelsColors)
{
    open(calmState);
    HelpIcon* help = helpIcons().constFirst();
    const QPoint place = help->rect().center();
    QHelpEvent event(QEvent::ToolTip, place, help->mapToGlobal(place));
    QApplication::sendEvent(help, &event);
    const auto tooltip = [] {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
            return window->isVisible() && window->windowType() == Qt::ToolTip;
        });
        return found != windows.end() ? *found : nullptr;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return tooltip() != nullptr; }));
    const QImage picture = tooltip()->grab().toImage();
    EXPECT_EQ(picture.pixelColor(picture.width() / 2, 2), PanelColors::parchment);
    EXPECT_EQ(tooltip()->palette().color(QPalette::ToolTipText), PanelColors::inkText);
    QToolTip::hideText();
}

TEST_F(MenuPanelTest, TheArrowKeysMoveBetweenTheButtonsAndRoundTheEnds)
{
    open(calmState);
    press(Qt::Key_Down);
    EXPECT_EQ(focusText().toStdString(), "Open at Login: On") << "the disabled row is passed over";
    press(Qt::Key_Down);
    EXPECT_EQ(focusText().toStdString(), "Live data");
    press(Qt::Key_Right);
    EXPECT_NE(qobject_cast<HelpIcon*>(QApplication::focusWidget()), nullptr);
    press(Qt::Key_Left);
    EXPECT_EQ(focusText().toStdString(), "Live data");
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(focusText().toStdString(), "Quit Quenchly");
    press(Qt::Key_Down);
    EXPECT_EQ(focusText().toStdString(), "Open at Login: On");
}

TEST_F(MenuPanelTest, TabVisitsEveryControlFromTopToBottom)
{
    world.scratch.makeLink("program/quenchly", testing::RecordedTool::program());
    open(setAsideState(3));
    QList<QWidget*> visited;
    press(Qt::Key_Tab);
    while (QApplication::focusWidget() != nullptr && !visited.contains(QApplication::focusWidget())) {
        visited += QApplication::focusWidget();
        press(Qt::Key_Tab);
    }
    int enabledButtons = 0;
    for (const PanelButton* button : panel->findChildren<PanelButton*>())
        enabledButtons += button->isVisible() && button->isEnabled() ? 1 : 0;
    EXPECT_EQ(visited.size(), enabledButtons);
    int lastTop = 0;
    for (const QWidget* widget : visited) {
        const int top = widget->mapTo(panel->findChild<MenuContentView*>(), QPoint(0, widget->height() / 2)).y();
        EXPECT_GE(top, lastTop - 2) << qPrintable(widget->accessibleName());
        lastTop = top;
    }
}

TEST_F(MenuPanelTest, ReturnAndSpacePress)
{
    for (const int key : {Qt::Key_Return, Qt::Key_Space}) {
        open(calmState);
        press(Qt::Key_Down);
        press(key);
        EXPECT_NE(button<ActionButton>("Open at Login: Off"), nullptr) << key;
        panel->close();
        world.loginItem->now = LoginItem::Status::enabled;
    }
}

TEST_F(MenuPanelTest, ARowKeepsTheFocusWhenOthersComeAndGo)
{
    open(calmState);
    press(Qt::Key_Down);
    QWidget* focus = QApplication::focusWidget();
    change(R"({"lastCheck":"2026-03-01T11:59:30Z","memoryReliefTip":"Free some","quarantined":[{"id":"x",)"
           R"("cmd":"ollama","quarantinedAt":"2026-03-01T11:00:00Z"}]})");
    ASSERT_NE(button<ActionButton>("Unload listed AI"), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), focus);
    EXPECT_EQ(focusText().toStdString(), "Open at Login: On");
}

TEST_F(MenuPanelTest, AnEntryKeepsItsButtonWhenOneBeforeItGoes)
{
    world.scratch.makeLink("program/quenchly", testing::RecordedTool::program());
    open(setAsideState(2));
    PillButton* second = nullptr;
    for (PillButton* button : panel->findChildren<PillButton*>())
        if (button->accessibleDescription() == QStringLiteral("ollama p1") && button->isVisible())
            second = button;
    ASSERT_NE(second, nullptr);
    second->setFocus(Qt::TabFocusReason);
    change(R"({"lastCheck":"2026-03-01T11:59:30Z","quarantined":[{"id":"p1","cmd":"ollama runner 1",)"
           R"("quarantinedAt":"2026-03-01T11:00:00Z"}]})");
    EXPECT_EQ(QApplication::focusWidget(), second);
}

TEST_F(MenuPanelTest, NothingMovesWhileThePanelIsClosed)
{
    open(calmState);
    panel->close();
    change(R"({"lastCheck":"2026-03-01T11:59:30Z","lastMetrics":{"load1":8,"cpuCount":8}})");
    for (const MeterBar* bar : panel->findChildren<MeterBar*>())
        EXPECT_FALSE(bar->isMoving());
    panel->openAt({});
    for (const MeterBar* bar : panel->findChildren<MeterBar*>())
        EXPECT_FALSE(bar->isMoving()) << "the last value is there in the first frame";
    EXPECT_EQ(panel->findChild<MeterBar*>()->shownFill(), 100);
}

TEST_F(MenuPanelTest, GreyActionsSayWhyInTheirTooltips)
{
    open(setAsideState(2));
    const QString reason = plainToolTip(QStringLiteral("Needs the quenchly tool, which was not found"));
    int buttons = 0;
    for (const PanelButton* button : panel->findChildren<PanelButton*>())
        if (button->isVisible() && !button->isEnabled()) {
            ++buttons;
            EXPECT_EQ(button->toolTip(), reason) << qPrintable(button->text());
            EXPECT_TRUE(button->accessibleDescription().startsWith(QStringLiteral("Needs the quenchly tool")));
        }
    EXPECT_EQ(buttons, 4) << "the first row, two to acknowledge and all of them";
}

TEST_F(MenuPanelTest, WhatHasNoTextOfItsOwnIsNamedInTheLanguageInForce)
{
    L10n::testingLanguage = AppLanguage::ja;
    open(calmState);
    QStringList names;
    for (const QWidget* widget : panel->findChildren<QWidget*>())
        names += widget->accessibleName();
    L10n::testingLanguage.reset();
    for (const char* name : {"ヘルプ", "ステータス、ヘルプ", "追加メモリのヒント、ヘルプ", "スクロール"})
        EXPECT_TRUE(names.contains(QString::fromUtf8(name))) << name;
    for (const char* name : {"Help", "Status", "Scroll"})
        EXPECT_EQ(names.filter(QLatin1String(name)).size(), 0) << name;
}

TEST_F(MenuPanelTest, EveryControlHasARoleANameAndADescription)
{
    open(setAsideState(2));
    int controls = 0;
    for (QWidget* widget : panel->findChildren<QWidget*>()) {
        const bool isButton = qobject_cast<PanelButton*>(widget) != nullptr;
        if (!widget->isVisible() || (!isButton && qobject_cast<MeterBar*>(widget) == nullptr))
            continue;
        ++controls;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(accessible, nullptr);
        EXPECT_EQ(accessible->role(), isButton ? QAccessible::Button : QAccessible::ProgressBar);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty());
        EXPECT_FALSE(accessible->text(QAccessible::Description).isEmpty())
            << qPrintable(accessible->text(QAccessible::Name));
    }
    EXPECT_GT(controls, 20);
}

}  // namespace
}  // namespace quenchly
