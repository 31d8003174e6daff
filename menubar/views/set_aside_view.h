#pragma once

#include <QWidget>
#include <vector>

#include "menu_content.h"

class QVBoxLayout;

namespace quenchly {

class HelpIcon;
class PillButton;
class SectionHeading;
class SetAsideRow;
class TextLabel;

/// The set-aside processes, each with a button to acknowledge it. An entry keeps its widget, and so the focus, for as
/// long as it is listed.
class SetAsideView : public QWidget {
    Q_OBJECT

public:
    explicit SetAsideView(QWidget* parent = nullptr);

    void setContent(const MenuContent::SetAside& content);

Q_SIGNALS:
    void acknowledged(const Text& id);
    void allAcknowledged();

private:
    QWidget* makeClearAll();
    void showEntries(const MenuContent::SetAside& content);
    /// The row that shows the entry already, if one does, else a new one.
    SetAsideRow* takeRow(const Text& id);

    SectionHeading* heading_;
    QVBoxLayout* rowColumn_;
    std::vector<SetAsideRow*> rows_;
    QWidget* clearAllRow_;
    PillButton* clearAll_;
    HelpIcon* clearAllHelp_;
    TextLabel* footnote_;
};

}  // namespace quenchly
