#pragma once

#include "menu_content.h"
#include "panel_button.h"
#include "text_lines.h"

namespace quenchly {

class HelpIcon;

/// The pressable part of an action row: a title, and at its end what pressing it does.
class ActionButton : public PanelButton {
    Q_OBJECT

public:
    explicit ActionButton(QWidget* parent = nullptr);

    void setTrailing(const QString& trailing);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QFont trailingFont_;
    QString trailing_;
    TextLines::Line trailingLine_;
    TextLines::Paragraph title_;
};

/// One action of the panel across its whole width, with its help icon. The help stays within reach while the action is
/// disabled.
class ActionRow : public QWidget {
    Q_OBJECT

public:
    explicit ActionRow(QWidget* parent = nullptr);

    void setContent(const MenuContent::Row& row);

    /// Lets the Tab key come here from the help of `previous`, which is in the same window.
    void followInTabOrder(const ActionRow& previous);

Q_SIGNALS:
    void triggered(MenuAction action);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    MenuAction action_ = MenuAction::quit;
    ActionButton* button_;
    HelpIcon* help_;
};

}  // namespace quenchly
