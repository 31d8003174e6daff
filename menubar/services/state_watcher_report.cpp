#include "state_watcher.h"
#include "support_contact.h"

namespace quenchly {

void StateWatcher::openReportProblem()
{
    const auto version = system_.bundleInfo.find("CFBundleShortVersionString");
    SupportContact::presentReportProblem(system_,
                                         {.version = version == system_.bundleInfo.end() ? "?" : version->second,
                                          .macModel = sysctlString("hw.model").value_or("Mac")});
}

std::optional<std::string> StateWatcher::sysctlString(const std::string& name) const
{
    return system_.sysctlString(name);
}

}  // namespace quenchly
