#pragma once

#include <QWidget>
#include <vector>

#include "menu_content.h"

class QKeyEvent;

namespace quenchly {

class ActionsView;
class HeaderView;
class SetAsideView;
class TargetsView;
class TextLabel;

/// The column of the panel: the header, the targets, what is set aside, the actions and the footer. It paints a
/// MenuContent and tells what is pressed.
class MenuContentView : public QWidget {
    Q_OBJECT

public:
    explicit MenuContentView(QWidget* parent = nullptr);

    /// While the panel can be seen its rows move only when one comes or goes, and not as long as the pointer is on the
    /// rows to press.
    void setContent(const MenuContent& content);

    /// The height that the content takes at the panel's width.
    int contentHeight() const;

    /// Moves the focus for an arrow key: up and down between the buttons, left and right over the help icons too. False
    /// for other keys.
    bool moveFocus(const QKeyEvent& event);

Q_SIGNALS:
    void triggered(MenuAction action);
    void acknowledged(const Text& id);
    void allAcknowledged();
    /// The pointer has left the rows, and the content that could not be shown under it can be now.
    void released();
    /// An arrow key has put the focus on a widget.
    void focusMoved(QWidget* focus);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeSetAside();
    QWidget* makeFooter();
    /// What the focus can be on, in its order.
    std::vector<QWidget*> focusStops() const;

    void present(const MenuContent& content, bool keepsRows);

    MenuContent content_;
    QObject* underPointer_ = nullptr;  ///< which of the sections with rows to press
    bool isBehind_ = false;            ///< rows have come or gone that are yet to be shown so
    HeaderView* header_;
    TargetsView* targets_;
    QWidget* setAsideSection_;
    SetAsideView* setAside_;
    ActionsView* actions_;
    TextLabel* version_;
    TextLabel* updates_;
};

}  // namespace quenchly
