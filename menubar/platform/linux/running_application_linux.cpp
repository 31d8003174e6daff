#include <QCoreApplication>

#include "running_application.h"

namespace quenchly {
namespace {

class RunningApplicationLinux final : public RunningApplication {
public:
    void setActivationPolicy(ActivationPolicy) override {}
    void activate() override {}
    void terminate() override
    {
        QMetaObject::invokeMethod(
            qApp, [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
    }
};

}  // namespace

std::unique_ptr<RunningApplication> makeRunningApplication()
{
    return std::make_unique<RunningApplicationLinux>();
}

}  // namespace quenchly
