#pragma once

#include <QFrame>

class QScrollArea;
class QScrollBar;
class QTimer;

namespace quenchly {

class MenuContentView;
class PanelController;

/// The window that opens from the menu bar item. It shows what the controller decides, tells it what is pressed, and
/// whether it can be seen: a closed or minimized panel cannot.
class MenuPanel : public QFrame {
    Q_OBJECT

public:
    /// How the window stands on the desktop.
    enum class Role {
        popup,     ///< opened from the item: frameless, and it closes when something else is pressed
        ordinary,  ///< there is no item to open it from
    };

    /// `controller` must outlive the panel, and serves one that can be seen at a time.
    MenuPanel(PanelController& controller, Role role);
    ~MenuPanel() override;

    Role role() const { return role_; }

    /// Opens near a point of the screen, wholly inside that screen's work area, and stays there while it grows and
    /// shrinks. A null point leaves the place to the system.
    void openAt(QPoint position);

    /// Shows the state of now without opening the panel.
    void refresh();

    /// Shows the state of now at its whole height, however low the screen is: for a picture.
    void showWhole();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void makeScrollBar();
    /// False for a key that does not scroll.
    bool scroll(int key);
    void tellWhetherShown();
    void leave();
    void fit();
    void place();
    QRect workArea() const;

    PanelController& controller_;
    Role role_;
    MenuContentView* view_;
    QScrollArea* scrollArea_;
    QScrollBar* scrollBar_;
    QTimer* focusLoss_;
    QPoint anchor_;
};

}  // namespace quenchly
