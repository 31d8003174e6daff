#include "tool_presence.h"

#include "command_runner.h"
#include "executable_file.h"

namespace quenchly {

bool ToolPresence::stands() const
{
    return availability_ == ToolAvailability::available && isExecutableFile(*tool_) && fileStamp(*tool_) == stamp_ &&
           (!runtime_ || isExecutableFile(*runtime_));
}

void ToolPresence::refresh(const System& system)
{
    if (stands())
        return;
    *this = {};
    const auto runner = CLIRunner::find({}, system);
    if (!runner)
        return;
    tool_ = runner->cli;
    stamp_ = fileStamp(*tool_);
    availability_ = runner->availability();
    runtime_ = runner->program();
    if (runtime_ == tool_)
        runtime_.reset();
}

}  // namespace quenchly
