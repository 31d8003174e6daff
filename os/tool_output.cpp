#include "tool_output.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "child_process.h"
#include "descriptor.h"

namespace quenchly {
namespace {

std::string readToEnd(int descriptor)
{
    std::string text;
    std::array<char, 4096> chunk;
    while (true) {
        const ssize_t count = read(descriptor, chunk.data(), chunk.size());
        if (count > 0)
            text.append(chunk.data(), static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return text;
    }
}

}  // namespace

std::optional<ToolOutput> runTool(const std::vector<std::string>& command)
{
    std::array<int, 2> ends{-1, -1};
    if (pipe(ends.data()) != 0)
        return std::nullopt;
    Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    fcntl(readEnd.number(), F_SETFD, FD_CLOEXEC);
    fcntl(writeEnd.number(), F_SETFD, FD_CLOEXEC);
    const std::optional<pid_t> child = start({.executable = command.front(),
                                              .arguments = {command.begin() + 1, command.end()},
                                              .environment = environmentVariables()},
                                             writeEnd.number());
    writeEnd.close();
    if (!child)
        return std::nullopt;
    std::string output = readToEnd(readEnd.number());
    return ToolOutput{.exitStatus = exitStatusOf(*child), .standardOutput = std::move(output)};
}

}  // namespace quenchly
