#include "tool_output.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "descriptor.h"

extern char** environ;

namespace quenchly {
namespace {

class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void openNull(int target, int mode) { posix_spawn_file_actions_addopen(&actions_, target, "/dev/null", mode, 0); }
    void duplicate(int source, int target) { posix_spawn_file_actions_adddup2(&actions_, source, target); }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

class SpawnAttributes {
public:
    SpawnAttributes()
    {
        posix_spawnattr_init(&attributes_);
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
        // macOS: only the descriptors named in the file actions reach the child, whatever other threads have open.
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_CLOEXEC_DEFAULT);
#endif
    }
    ~SpawnAttributes()
    {
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    const posix_spawnattr_t* get() const
    {
        return &attributes_;
    }

private:
    posix_spawnattr_t attributes_;
};

std::optional<pid_t> spawn(const std::vector<std::string>& command, int outputDescriptor)
{
    std::vector<char*> arguments;
    for (const std::string& word : command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);

    FileActions actions;
    actions.openNull(STDIN_FILENO, O_RDONLY);
    actions.duplicate(outputDescriptor, STDOUT_FILENO);
    actions.openNull(STDERR_FILENO, O_WRONLY);
    const SpawnAttributes attributes;
    pid_t child = 0;
    if (posix_spawn(&child, arguments[0], actions.get(), attributes.get(), arguments.data(), environ) != 0)
        return std::nullopt;
    return child;
}

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

int exitStatusOf(pid_t child)
{
    int status = 0;
    pid_t waited = 0;
    do {
        waited = waitpid(child, &status, 0);
    } while (waited < 0 && errno == EINTR);
    return waited == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

std::optional<ToolOutput> runTool(const std::vector<std::string>& command)
{
    // A word with a NUL would silently lose its end.
    if (std::ranges::any_of(command, [](const std::string& word) { return word.find('\0') != std::string::npos; }))
        return std::nullopt;
    std::array<int, 2> ends{-1, -1};
    if (pipe(ends.data()) != 0)
        return std::nullopt;
    Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    fcntl(readEnd.number(), F_SETFD, FD_CLOEXEC);
    fcntl(writeEnd.number(), F_SETFD, FD_CLOEXEC);
    const std::optional<pid_t> child = spawn(command, writeEnd.number());
    writeEnd.close();
    if (!child)
        return std::nullopt;
    std::string output = readToEnd(readEnd.number());
    return ToolOutput{.exitStatus = exitStatusOf(*child), .standardOutput = std::move(output)};
}

}  // namespace quenchly
