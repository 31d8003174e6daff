#pragma once

#include <QString>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "dice.h"
#include "menu_bar_application.h"
#include "stand_in.h"
#include "state_watcher.h"
#include "updater.h"

namespace quenchly::soak {

/// What the application said where nobody looks: lines for the system log and Qt's messages. Any thread.
class Words {
public:
    Words();
    ~Words();
    Words(const Words&) = delete;
    Words& operator=(const Words&) = delete;

    void add(const std::string& line);
    std::vector<std::string> all() const;

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

/// An item that is pressed by call.
class PressedItem : public MenuBarExtra {
public:
    void setContent(const MenuBarExtraContent& content) override { shown = content; }
    bool isAvailable() const override { return true; }
    void press() { Q_EMIT activated(QPoint(600, 0), {}); }

    MenuBarExtraContent shown;
};

/// Watcher, item and panel as the program joins them, on a home folder of their own, with the real stand-in checker's
/// tool and the real process table. Its clock stands until it is moved.
class SoakedApplication {
public:
    /// `tools` is a folder to put the tool into. With `inTray` the item is the system's own.
    SoakedApplication(const CheckedHome& home, const std::filesystem::path& tools, bool inTray = false);

    StateWatcher& watcher() { return *watcher_; }
    Instant now() const { return now_; }
    const Words& words() const { return words_; }

    /// Moves the clock by a second, refreshes, and lets everything happen that is due.
    void refresh();
    /// What the event loop of the program would do now.
    static void letHappen();
    /// The same until something is so; false after two minutes.
    static bool letHappenUntil(const std::function<bool()>& condition);

    /// Presses the item; just after the panel went that does nothing.
    void press() { item_->press(); }
    MenuPanel* openPanel() const;
    bool showsPanel() const { return openPanel() != nullptr; }
    /// Refreshes until the open panel shows what a scan of the targets has found since.
    void awaitScan();

    /// One of the things that a person can ask for, as the dice say.
    void act(Dice& dice);
    bool isBusy() const { return watcher_->protectBusy() || watcher_->ackBusy(); }

    /// How what is shown differs from what a new watcher and the program for terminals say of the same files at the
    /// same time; empty when it does not.
    std::string error();

private:
    System scripted(System system, const std::filesystem::path& tools);
    std::optional<LastMetrics> sample(bool swapCritical) const;
    std::string difference(StateWatcher& fresh) const;
    std::string printedStatus() const;

    CheckedHome home_;
    Words words_;
    Instant now_;
    std::int64_t refreshes_ = 0;
    std::shared_ptr<std::atomic<int>> scans_ = std::make_shared<std::atomic<int>>(0);
    bool samples_ = true;
    std::unique_ptr<StateWatcher> watcher_;
    std::unique_ptr<Updater> updater_;
    PressedItem* item_ = nullptr;
    std::unique_ptr<MenuBarApplication> application_;
};

}  // namespace quenchly::soak
