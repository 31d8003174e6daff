#pragma once

#include <QWidget>

#include "menu_content.h"

namespace quenchly {

class HelpIcon;
class PillButton;
class TextLabel;

/// One set-aside entry: its label, its age and the button that acknowledges it.
class SetAsideRow : public QWidget {
    Q_OBJECT

public:
    SetAsideRow(Text id, QWidget* parent);

    const Text& id() const { return id_; }
    PillButton* button() const { return button_; }
    HelpIcon* help() const { return help_; }

    void setContent(const MenuContent::SetAsideEntry& entry, const MenuContent::SetAside& section);

Q_SIGNALS:
    void acknowledged(const Text& id);

private:
    Text id_;
    TextLabel* label_;
    TextLabel* distinction_;
    TextLabel* age_;
    PillButton* button_;
    HelpIcon* help_;
};

}  // namespace quenchly
