#pragma once

#include <QFrame>

class QLabel;
class QVBoxLayout;

namespace quenchly {

class StateWatcher;

/// The window that opens from the menu bar item: headline, Protection, last check, the figures of load and swap, and
/// the detail.
class StatusWindow : public QFrame {
    Q_OBJECT

public:
    /// How the window stands on the desktop.
    enum class Role {
        popup,     ///< opened from the item: frameless, and it closes when something else is pressed
        ordinary,  ///< there is no item to open it from
    };

    /// `watcher` must outlive the window.
    StatusWindow(const StateWatcher& watcher, Role role);

    /// Opens near a point of the screen, wholly inside that screen's work area. A null point leaves the place to the
    /// system.
    void openAt(QPoint position);

    /// Shows the watcher's state of now without opening the window.
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Figure {
        QWidget* row = nullptr;
        QLabel* name = nullptr;
        QLabel* value = nullptr;
    };
    Figure addFigure(QVBoxLayout& lines);
    void show(Figure& figure, const QString& name, const QString& value);

    const StateWatcher& watcher_;
    Role role_;
    QLabel* glyph_ = nullptr;
    QLabel* headline_ = nullptr;
    QLabel* lockup_ = nullptr;
    QLabel* lastCheck_ = nullptr;
    Figure load_;
    Figure swap_;
    QLabel* detail_ = nullptr;
};

}  // namespace quenchly
