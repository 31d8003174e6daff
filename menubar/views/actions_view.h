#pragma once

#include <QWidget>
#include <map>
#include <vector>

#include "menu_content.h"

namespace quenchly {

class ActionRow;
class Hairline;

/// The action rows, in groups with hairlines between them. A row keeps its widget, and so the focus, for as long as it
/// is there, whatever comes and goes around it.
class ActionsView : public QWidget {
    Q_OBJECT

public:
    using Groups = std::vector<std::vector<MenuContent::Row>>;

    explicit ActionsView(QWidget* parent = nullptr);

    void setContent(const Groups& groups);

Q_SIGNALS:
    void triggered(MenuAction action);

private:
    /// The place of a row; the two positions of a switch share one.
    enum class Place { protection, unload, openAtLogin, automaticChecks, liveData, updates, report, uninstall, quit };
    static Place placeOf(MenuAction action);

    struct Line {
        Hairline* hairline;  ///< above the row
        ActionRow* row;
    };
    std::map<Place, Line> lines_;  ///< all of them, in their order; those that are not there are hidden
};

}  // namespace quenchly
