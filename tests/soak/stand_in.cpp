#include "stand_in.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quenchly::soak {
namespace {

std::vector<char*> nullTerminated(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

std::optional<pid_t> startChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                                const std::vector<std::string>& variables)
{
    std::vector<std::string> words{program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> environment = nullTerminated(variables);
    environment.pop_back();
    for (char** entry = environ; *entry != nullptr; ++entry)
        environment.push_back(*entry);
    environment.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failure =
        posix_spawn(&child, words.front().c_str(), &files, nullptr, nullTerminated(words).data(), environment.data());
    posix_spawn_file_actions_destroy(&files);
    return failure == 0 ? std::optional(child) : std::nullopt;
}

void killChild(std::optional<pid_t>& child)
{
    if (!child)
        return;
    ::kill(*child, SIGKILL);
    ::waitpid(*child, nullptr, 0);
    child.reset();
}

std::optional<pid_t> startStandIn(const CheckedHome& home, const std::vector<std::string>& arguments)
{
    return startChild(QUENCHLY_DEMO_TOOL_PATH, arguments,
                      {"QUENCHLY_HOME=" + home.dataHome().string(),
                       "QUENCHLY_LAUNCH_AGENTS=" + home.launchAgents().string(), "QUENCHLY_DASHBOARD_PORT=0"});
}

bool runStandIn(const CheckedHome& home, const std::vector<std::string>& arguments)
{
    const auto child = startStandIn(home, arguments);
    int status = 0;
    return child && ::waitpid(*child, &status, 0) == *child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace quenchly::soak
