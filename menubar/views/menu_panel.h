#pragma once

#include <QFrame>
#include <optional>
#include <vector>

#include "menu_content.h"
#include "target_scan.h"

class QScrollArea;
class QScrollBar;

namespace quenchly {

class MenuContentView;
class StateWatcher;
class Updater;

/// The window that opens from the menu bar item. While it is closed it does nothing; it reads the watcher's state when
/// it opens and on every change after that.
class MenuPanel : public QFrame {
    Q_OBJECT

public:
    /// How the window stands on the desktop.
    enum class Role {
        popup,     ///< opened from the item: frameless, and it closes when something else is pressed
        ordinary,  ///< there is no item to open it from
    };

    /// `watcher` and `updater` must outlive the panel.
    MenuPanel(StateWatcher& watcher, Updater& updater, Role role);
    ~MenuPanel() override;

    Role role() const { return role_; }

    /// Opens near a point of the screen, wholly inside that screen's work area, and stays there while it grows and
    /// shrinks. A null point leaves the place to the system.
    void openAt(QPoint position);

    /// Shows the state of now without opening the panel.
    void refresh();

    /// Shows the state of now at its whole height, however low the screen is: for a picture.
    void showWhole();

    /// What a scan of the targets found.
    void setTargetRows(std::vector<TargetRow> rows);
    /// What a scan of the targets is about.
    TargetScanner::Situation targetSituation() const;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void makeScrollBar();
    /// False for a key that does not scroll.
    bool scroll(int key);
    void followChange();
    MenuContent content() const;
    void perform(MenuAction action);
    /// For actions that show something else; the panel would cover it.
    void performElsewhere(MenuAction action);
    void refreshTargets();
    void fit();
    void place();
    QRect workArea() const;

    StateWatcher& watcher_;
    Updater& updater_;
    Role role_;
    MenuContentView* view_;
    QScrollArea* scrollArea_;
    QScrollBar* scrollBar_;
    QPoint anchor_;
    std::vector<TargetRow> targetRows_;
    std::optional<QuenchStatus> scannedStatus_;
    TargetScan targetScan_;
};

}  // namespace quenchly
