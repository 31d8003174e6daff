#pragma once

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <memory>

namespace quenchly {

/// While it lives, SIGINT, SIGTERM and SIGHUP end the event loop, so that what the program holds is put away. The
/// second one of a kind ends the program at once, and one that was ignored when the program started stays ignored.
/// Needs an application object; one at a time.
class QuitSignals {
public:
    QuitSignals();
    ~QuitSignals();
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;

private:
    static constexpr std::array<int, 3> numbers{SIGINT, SIGTERM, SIGHUP};

    std::array<int, 2> pipe_{-1, -1};
    std::array<struct sigaction, numbers.size()> before_{};
    std::unique_ptr<QSocketNotifier> arrival_;
};

}  // namespace quenchly
