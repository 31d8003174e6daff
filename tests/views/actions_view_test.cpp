#include "actions_view.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "action_row.h"
#include "hairline.h"
#include "help_icon.h"

namespace quenchly {
namespace {

using enum MenuAction;
using Groups = ActionsView::Groups;
using Labels = std::vector<std::string>;

MenuContent::Row row(MenuAction action, const std::string& label)
{
    return {.action = action, .label = label, .help = "Help."};
}

const MenuContent::Row on = row(protectOff, "Protection On");
const MenuContent::Row off = row(protectOn, "Protection Off");
const MenuContent::Row unload = row(unloadListed, "Unload");
const MenuContent::Row live = row(liveData, "Live data");
const MenuContent::Row report = row(reportProblem, "Report");
const MenuContent::Row end = row(quit, "Quit");

/// The view between two other buttons, in a window that has the focus.
class ActionsViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(before);
        column->addWidget(view);
        column->addWidget(after);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void show(const Groups& groups)
    {
        view->setContent(groups);
        QApplication::processEvents();  // lays it out
    }

    template <class Widget>
    QList<Widget*> fromTop() const
    {
        QList<Widget*> widgets;
        for (Widget* widget : view->findChildren<Widget*>())
            if (widget->isVisible())
                widgets += widget;
        std::sort(widgets.begin(), widgets.end(), [this](const QWidget* a, const QWidget* b) {
            return a->mapTo(view, QPoint()).y() < b->mapTo(view, QPoint()).y();
        });
        return widgets;
    }

    Labels labels() const
    {
        Labels labels;
        for (const ActionButton* button : fromTop<ActionButton>())
            labels.push_back(button->text().toStdString());
        return labels;
    }

    ActionButton* button(const std::string& label) const
    {
        for (ActionButton* button : fromTop<ActionButton>())
            if (button->text().toStdString() == label)
                return button;
        return nullptr;
    }

    /// What the Tab key reaches on its way from the button above to the one below, without the help icons.
    Labels tabOrder()
    {
        Labels order;
        before->setFocus(Qt::TabFocusReason);
        for (int presses = 0; presses < 50 && QApplication::focusWidget() != after; ++presses) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            if (const auto* reached = qobject_cast<ActionButton*>(QApplication::focusWidget()))
                order.push_back(reached->text().toStdString());
        }
        return order;
    }

    QWidget window;
    QPushButton* before = new QPushButton(&window);
    ActionsView* view = new ActionsView(&window);
    QPushButton* after = new QPushButton(&window);
};

TEST_F(ActionsViewTest, TheRowsStandInTheContentsOrder)
{
    show({{end}, {live}});
    EXPECT_EQ(labels(), (Labels{"Quit", "Live data"}));
    show({{live}, {end}});
    EXPECT_EQ(labels(), (Labels{"Live data", "Quit"}));
    show({{report, live, off}, {end, unload}});
    EXPECT_EQ(labels(), (Labels{"Report", "Live data", "Protection Off", "Quit", "Unload"}));
}

TEST_F(ActionsViewTest, ADividerStandsBetweenEachTwoGroupsAndNowhereElse)
{
    show({{on, unload}, {live}, {end, report}});
    ASSERT_EQ(fromTop<Hairline>().size(), 2);
    for (const auto& [divider, below] : {std::pair(0, "Live data"), std::pair(1, "Quit")}) {
        const Hairline* line = fromTop<Hairline>().at(divider);
        EXPECT_EQ(line->geometry().bottom() + 1, button(below)->parentWidget()->y()) << below;
    }
    show({{end}, {}, {report}});
    EXPECT_EQ(fromTop<Hairline>().size(), 1);
    show({{end, report}});
    EXPECT_EQ(fromTop<Hairline>().size(), 0);
    show({{}, {end}});
    EXPECT_EQ(fromTop<Hairline>().size(), 0);
}

TEST_F(ActionsViewTest, ARowKeepsTheFocusWhileOthersComeGoAndMoveAroundIt)
{
    show({{on}, {live}, {end}});
    ActionButton* focus = button("Live data");
    focus->setFocus(Qt::TabFocusReason);
    for (const Groups& groups : {Groups{{on, unload}, {live}, {end}}, Groups{{live}, {end}}, Groups{{end}, {live}},
                                 Groups{{report, on, end, live, unload}}, Groups{{live}}}) {
        show(groups);
        EXPECT_EQ(button("Live data"), focus);
        EXPECT_EQ(QApplication::focusWidget(), focus) << groups.size();
    }
}

TEST_F(ActionsViewTest, TheTwoPositionsOfASwitchAreOneRow)
{
    const struct {
        MenuContent::Row one;
        MenuContent::Row other;
    } switches[] = {
        {on, off},
        {row(installAgent, "Start"), on},
        {row(openAtLoginOff, "Open at Login: On"), row(openAtLoginOn, "Open at Login: Off")},
        {row(automaticChecksOff, "Auto updates: On"), row(automaticChecksOn, "Auto updates: Off")},
    };
    for (const auto& [one, other] : switches) {
        show({{one, live}});
        ActionButton* focus = button(one.label);
        focus->setFocus(Qt::TabFocusReason);
        show({{live, other}});
        EXPECT_EQ(button(other.label), focus) << one.label;
        EXPECT_TRUE(focus->hasFocus()) << one.label;
    }
}

TEST_F(ActionsViewTest, TheTabKeyFollowsTheShownOrder)
{
    for (const Groups& groups :
         {Groups{{on}, {live}, {end}}, Groups{{on, unload}, {live}, {end}}, Groups{{end}, {live}, {on}},
          Groups{{report, end}, {unload, live}}, Groups{{on}, {live}, {end}}}) {
        show(groups);
        EXPECT_EQ(tabOrder(), labels());
        EXPECT_EQ(QApplication::focusWidget(), after);
    }
}

TEST_F(ActionsViewTest, TheHelpOfARowComesAfterItsButton)
{
    show({{live}, {end}});
    show({{end}, {live}});
    before->setFocus(Qt::TabFocusReason);
    for (const char* label : {"Quit", "Live data"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), button(label));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), button(label)->parentWidget()->findChild<HelpIcon*>()) << label;
    }
}

TEST_F(ActionsViewTest, AScreenReaderGoesThroughTheRowsInTheShownOrder)
{
    show({{live}, {end}});
    show({{end}, {on, live}});
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(view);
    Labels read;
    for (int i = 0; i < accessible->childCount(); ++i)
        if (auto* child = qobject_cast<ActionRow*>(accessible->child(i)->object()); child && child->isVisible())
            read.push_back(child->findChild<ActionButton*>()->text().toStdString());
    EXPECT_EQ(read, labels());
}

TEST_F(ActionsViewTest, APressTellsTheActionOfTheRowAsItIsNow)
{
    std::vector<MenuAction> pressed;
    QObject::connect(view, &ActionsView::triggered, [&](MenuAction action) { pressed.push_back(action); });
    show({{on}, {end}});
    button("Protection On")->click();
    show({{end}, {off}});
    button("Protection Off")->click();
    button("Quit")->click();
    EXPECT_EQ(pressed, (std::vector{protectOff, protectOn, quit}));
}

}  // namespace
}  // namespace quenchly
