#pragma once

#include <QObject>
#include <memory>

#include "focus_taking_press.h"
#include "menu_bar_extra.h"
#include "menu_panel.h"
#include "panel_controller.h"
#include "state_watcher.h"
#include "updater.h"

namespace quenchly {

/// Joins the watcher, the item in the menu bar and the panel that opens from it.
class MenuBarApplication : public QObject {
    Q_OBJECT

public:
    MenuBarApplication(StateWatcher& watcher, Updater& updater, std::unique_ptr<MenuBarExtra> extra);
    ~MenuBarApplication() override;

    /// Opens the panel, also when it is open behind others; while an alert waits for its answer, brings that forward.
    void open(QPoint position, const QString& activationToken);

private:
    void toggle(QPoint position, const QString& activationToken);
    void followAvailability(bool available);
    MenuPanel& panel();
    bool eventFilter(QObject* object, QEvent* event) override;

    StateWatcher& watcher_;
    PanelController controller_;
    std::unique_ptr<MenuBarExtra> extra_;
    QPoint lastPosition_;
    FocusTakingPress focusTakingPress_;
    bool availabilityKnown_ = false;
    std::unique_ptr<MenuPanel> panel_;  // goes first: hiding it still tells of a lost focus
};

}  // namespace quenchly
