#include "run_later.h"

#include <QCoreApplication>
#include <QTimer>

namespace quenchly {

void runLater(std::chrono::milliseconds delay, const std::function<void()>& task)
{
    QTimer::singleShot(delay, qApp, task);
}

}  // namespace quenchly
