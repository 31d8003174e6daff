#include "quit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cerrno>

namespace quenchly {
namespace {

volatile std::sig_atomic_t writeEnd = -1;

void passOn(int)
{
    const int before = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = write(writeEnd, &byte, 1);
    errno = before;
}

bool isIgnored(int number)
{
    struct sigaction present {};
    return sigaction(number, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
}

}  // namespace

QuitSignals::QuitSignals()
{
    if (pipe(pipe_.data()) != 0)
        return;  // the signals still end the program, as ever
    for (const int end : pipe_) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    writeEnd = pipe_[1];
    arrival_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    // Unlike quit(), exit() does not ask the windows.
    QObject::connect(arrival_.get(), &QSocketNotifier::activated, arrival_.get(), [notifier = arrival_.get()] {
        notifier->setEnabled(false);
        QCoreApplication::exit();
    });
    struct sigaction action {};
    action.sa_handler = passOn;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        sigaction(numbers[i], isIgnored(numbers[i]) ? nullptr : &action, &before_[i]);
}

QuitSignals::~QuitSignals()
{
    if (!arrival_)
        return;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        sigaction(numbers[i], &before_[i], nullptr);
    arrival_.reset();
    writeEnd = -1;
    close(pipe_[0]);
    close(pipe_[1]);
}

}  // namespace quenchly
