#pragma once

#include <string>
#include <utility>
#include <vector>

#include "enumeration.h"

namespace quenchly {

/// Every command of the checker's tool that is run. docs/contract.md says what each has to do.
enum class ToolCommand { enable, disable, installAgent, removeAgent, unloadListed, acknowledge, serve, uninstall };

/// As they are typed; "ID" stands for the id of a set-aside entry.
template <>
inline constexpr auto rawValues<ToolCommand> = textsOfCases<ToolCommand>({
    {ToolCommand::enable, "enable"},
    {ToolCommand::disable, "disable"},
    {ToolCommand::installAgent, "install-agent"},
    {ToolCommand::removeAgent, "remove-agent"},
    {ToolCommand::unloadListed, "unload-listed"},
    {ToolCommand::acknowledge, "quarantine ack ID"},
    {ToolCommand::serve, "serve"},
    {ToolCommand::uninstall, "uninstall --yes"},
});

/// What the tool is told in one run.
class ToolRun {
public:
    /// `id` is that of a set-aside entry, for the command that takes one.
    ToolRun(ToolCommand command, std::string id = {}) : command_(command), id_(std::move(id)) {}

    /// One argument for each word of the command. The id is one whatever it holds.
    std::vector<std::string> arguments() const;

private:
    ToolCommand command_;
    std::string id_;
};

}  // namespace quenchly
