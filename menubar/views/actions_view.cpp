#include "actions_view.h"

#include <QVBoxLayout>
#include <algorithm>

#include "action_row.h"
#include "hairline.h"
#include "menu_rows.h"

namespace quenchly {
namespace {

constexpr int edge = 5;

}  // namespace

ActionsView::ActionsView(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this))
{
    column_->setContentsMargins(0, edge, 0, edge);
    column_->setSpacing(0);
    for (int i = 0; i <= static_cast<int>(MenuAction::quit); ++i) {
        const MenuAction action = static_cast<MenuAction>(i);
        if (standingFor(action) != action)
            continue;
        const Line line{new Hairline(this), new ActionRow(this)};
        line.hairline->hide();
        line.row->hide();
        connect(line.row, &ActionRow::triggered, this, &ActionsView::triggered);
        lines_.emplace(action, line);
    }
}

void ActionsView::setContent(const Groups& groups)
{
    std::vector<Line> lines;
    for (const auto& group : groups) {
        bool divided = !lines.empty();
        for (const MenuContent::Row& content : group) {
            const Line& line = lines_.at(standingFor(content.action));
            line.row->setContent(content);
            line.hairline->setVisible(divided);
            lines.push_back(line);
            divided = false;
        }
    }
    arrange(lines);
}

void ActionsView::arrange(const std::vector<Line>& lines)
{
    if (lines == shown_)
        return;
    for (const Line& line : shown_) {
        column_->removeWidget(line.hairline);
        column_->removeWidget(line.row);
        if (std::find(lines.begin(), lines.end(), line) == lines.end()) {
            line.hairline->hide();
            line.row->hide();
        }
    }
    ActionRow* previous = nullptr;
    for (const Line& line : lines) {
        column_->addWidget(line.hairline);
        column_->addWidget(line.row);
        line.row->show();
        line.row->raise();  // screen readers go by the order of the children
        if (previous != nullptr)
            line.row->followInTabOrder(*previous);
        previous = line.row;
    }
    shown_ = lines;
}

}  // namespace quenchly
