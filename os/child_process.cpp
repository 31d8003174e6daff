#include "child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string_view>
#include <utility>

extern char** environ;

namespace quenchly {
namespace {

class SpawnPlan {
public:
    explicit SpawnPlan(int standardOutput)
    {
        posix_spawn_file_actions_init(&files_);
        posix_spawnattr_init(&attributes_);
        posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        if (standardOutput < 0)
            posix_spawn_file_actions_addopen(&files_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        else
            posix_spawn_file_actions_adddup2(&files_, standardOutput, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&files_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        short flags = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
        flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
#else
        posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1);
#endif
        posix_spawnattr_setflags(&attributes_, flags);
        resetSignals();
    }
    ~SpawnPlan()
    {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&files_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    const posix_spawn_file_actions_t* files() const
    {
        return &files_;
    }
    const posix_spawnattr_t* attributes() const
    {
        return &attributes_;
    }

private:
    void resetSignals()
    {
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        sigdelset(&signals, SIGKILL);
        sigdelset(&signals, SIGSTOP);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
    }

    posix_spawn_file_actions_t files_;
    posix_spawnattr_t attributes_;
};

std::vector<std::string> commandLine(const ChildProcess& child)
{
    std::vector<std::string> words{child.executable.string()};
    words.insert(words.end(), child.arguments.begin(), child.arguments.end());
    return words;
}

std::vector<std::string> assignments(const std::map<std::string, std::string>& environment)
{
    std::vector<std::string> entries;
    entries.reserve(environment.size());
    for (const auto& [name, value] : environment)
        entries.emplace_back(name).append("=").append(value);
    return entries;
}

std::vector<char*> nullTerminated(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

bool holdsNul(const std::vector<std::string>& texts)
{
    return std::ranges::any_of(texts, [](const std::string& text) { return text.find('\0') != std::string::npos; });
}

/// Whoever started this program may have told it to ignore the ends of children, which loses their exit statuses.
void keepExitStatuses()
{
    struct sigaction ends {};
    if (sigaction(SIGCHLD, nullptr, &ends) == 0 && ends.sa_handler == SIG_IGN)
        std::signal(SIGCHLD, SIG_DFL);
}

}  // namespace

std::map<std::string, std::string> environmentVariables()
{
    std::map<std::string, std::string> variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        if (const std::size_t equals = text.find('='); equals != std::string_view::npos)
            variables.emplace(text.substr(0, equals), text.substr(equals + 1));
    }
    return variables;
}

std::optional<pid_t> start(const ChildProcess& child, int standardOutput)
{
    std::vector<std::string> words = commandLine(child);
    std::vector<std::string> variables = assignments(child.environment);
    // A text with a NUL would silently lose its end.
    if (holdsNul(words) || holdsNul(variables))
        return std::nullopt;
    keepExitStatuses();
    const SpawnPlan plan(standardOutput);
    // Given a path, posix_spawnp would have a shell run a file that is no program on some systems.
    const auto spawn = child.executable.has_parent_path() ? posix_spawn : posix_spawnp;
    pid_t process = 0;
    const int failure = spawn(&process, words.front().c_str(), plan.files(), plan.attributes(),
                              nullTerminated(words).data(), nullTerminated(variables).data());
    return failure == 0 ? std::optional(process) : std::nullopt;
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

int runToEnd(const ChildProcess& child)
{
    const std::optional<pid_t> process = start(child);
    return process ? exitStatusOf(*process) : -1;
}

}  // namespace quenchly
