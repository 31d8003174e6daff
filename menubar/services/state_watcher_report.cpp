#include "state_watcher.h"
#include "support_contact.h"

namespace quenchly {

void StateWatcher::openReportProblem()
{
    SupportContact::presentReportProblem(system_, {.version = bundleVersion(system_.bundleInfo).value_or("?"),
                                                   .macModel = sysctlString("hw.model").value_or("Mac")});
}

std::optional<std::string> StateWatcher::sysctlString(const std::string& name) const
{
    return system_.sysctlString(name);
}

}  // namespace quenchly
