#include "actions_view.h"

#include <QVBoxLayout>

#include "action_row.h"
#include "hairline.h"

namespace quenchly {
namespace {

constexpr int edge = 5;

}  // namespace

ActionsView::ActionsView(QWidget* parent) : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, edge, 0, edge);
    column->setSpacing(0);
    for (int i = 0; i <= static_cast<int>(Place::quit); ++i) {
        const Line line{new Hairline(this), new ActionRow(this)};
        column->addWidget(line.hairline);
        column->addWidget(line.row);
        connect(line.row, &ActionRow::triggered, this, &ActionsView::triggered);
        lines_.emplace(static_cast<Place>(i), line);
    }
}

ActionsView::Place ActionsView::placeOf(MenuAction action)
{
    switch (action) {
        case MenuAction::installAgent:
        case MenuAction::protectOn:
        case MenuAction::protectOff:
            return Place::protection;
        case MenuAction::unloadListed:
            return Place::unload;
        case MenuAction::openAtLoginOn:
        case MenuAction::openAtLoginOff:
            return Place::openAtLogin;
        case MenuAction::automaticChecksOn:
        case MenuAction::automaticChecksOff:
            return Place::automaticChecks;
        case MenuAction::liveData:
            return Place::liveData;
        case MenuAction::checkForUpdates:
            return Place::updates;
        case MenuAction::reportProblem:
            return Place::report;
        case MenuAction::uninstall:
            return Place::uninstall;
        case MenuAction::quit:
            break;
    }
    return Place::quit;
}

void ActionsView::setContent(const Groups& groups)
{
    std::map<Place, bool> present;  // and whether it begins a group
    for (const auto& group : groups) {
        for (const MenuContent::Row& content : group) {
            const Place place = placeOf(content.action);
            lines_.at(place).row->setContent(content);
            present.emplace(place, &content == &group.front());
        }
    }
    for (const auto& [place, line] : lines_) {
        const auto found = present.find(place);
        line.row->setVisible(found != present.end());
        line.hairline->setVisible(found != present.end() && found->second && found != present.begin());
    }
}

}  // namespace quenchly
