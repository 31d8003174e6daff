#pragma once

#include <QWidget>
#include <map>
#include <vector>

#include "menu_content.h"

class QVBoxLayout;

namespace quenchly {

class ActionRow;
class Hairline;

/// The action rows in the content's order, in groups with hairlines between them. A row keeps its widget, and so the
/// focus, for as long as it is there, whatever comes, goes or moves around it.
class ActionsView : public QWidget {
    Q_OBJECT

public:
    using Groups = std::vector<std::vector<MenuContent::Row>>;

    explicit ActionsView(QWidget* parent = nullptr);

    void setContent(const Groups& groups);

Q_SIGNALS:
    void triggered(MenuAction action);

private:
    struct Line {
        Hairline* hairline;  ///< above the row
        ActionRow* row;

        bool operator==(const Line&) const = default;
    };
    void arrange(const std::vector<Line>& lines);

    QVBoxLayout* column_;
    std::map<MenuAction, Line> lines_;  ///< by what stands for the row; made together, so that Tab visits them together
    std::vector<Line> shown_;           ///< from top to bottom
};

}  // namespace quenchly
