#include "process_fixture.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quenchly {

namespace {

constexpr int deadlineMilliseconds = 30'000;

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> result;
    for (std::string& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

void write(const std::filesystem::path& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

}  // namespace

Child::Child(const std::filesystem::path& program, const std::vector<std::string>& arguments)
{
    fork(program, arguments, false);
    awaitReady();
}

std::unique_ptr<Child> Child::heldBeforeExec(const std::filesystem::path& program,
                                             const std::vector<std::string>& arguments)
{
    std::unique_ptr<Child> child(new Child);
    child->fork(program, arguments, true);
    child->awaitReady();
    return child;
}

Child::~Child()
{
    end();
}

void Child::fork(const std::filesystem::path& program, std::vector<std::string> arguments, bool waits)
{
    int input[2];
    int ready[2];
    if (::pipe2(input, O_CLOEXEC) != 0 || ::pipe2(ready, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    id_ = ::fork();
    if (id_ == 0) {
        ::dup2(input[0], STDIN_FILENO);
        ::dup2(ready[1], STDOUT_FILENO);
        char byte = '.';
        if (waits && (::write(STDOUT_FILENO, &byte, 1) != 1 || ::read(STDIN_FILENO, &byte, 1) != 1))
            ::_exit(1);
        run(program, arguments);
    }
    ::close(input[0]);
    ::close(ready[1]);
    input_ = input[1];
    ready_ = ready[0];
}

void Child::run(const std::filesystem::path& program, std::vector<std::string>& arguments)
{
    ::execv(program.c_str(), pointers(arguments).data());
    ::_exit(1);
}

void Child::letExec()
{
    command("");
}

void Child::exec(const std::vector<std::string>& arguments)
{
    std::string line = "exec ";
    for (const std::string& argument : arguments)
        line += argument + '\t';
    command(line);
}

void Child::rename(const std::string& name)
{
    command("name " + name);
}

void Child::command(const std::string& line)
{
    const std::string text = line + '\n';
    ASSERT_EQ(::write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    awaitReady();
}

void Child::awaitReady()
{
    pollfd awaited{ready_, POLLIN, 0};
    char byte = 0;
    ASSERT_EQ(::poll(&awaited, 1, deadlineMilliseconds), 1);
    ASSERT_EQ(::read(ready_, &byte, 1), 1) << "the process could not be started";
}

void Child::stop()
{
    int status = 0;
    ::kill(id_, SIGSTOP);
    ASSERT_EQ(::waitpid(id_, &status, WUNTRACED), id_);
    ASSERT_TRUE(WIFSTOPPED(status));
}

void Child::becomeZombie()
{
    siginfo_t info{};
    ::kill(id_, SIGKILL);
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(id_), &info, WEXITED | WNOWAIT), 0);
}

void Child::end()
{
    if (id_ <= 0)
        return;
    ::kill(id_, SIGKILL);
    ::waitpid(id_, nullptr, 0);
    ::close(input_);
    ::close(ready_);
    id_ = 0;
}

ProcessFixture::ProcessFixture()
{
    std::string name = testing::TempDir() + "/processes-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no folder");
    folder_ = name;
    std::filesystem::create_directory(fakeRoot());
}

ProcessFixture::~ProcessFixture()
{
    children_.clear();
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

std::filesystem::path ProcessFixture::program(const std::string& name) const
{
    std::filesystem::path copy = folder_ / name;
    if (!std::filesystem::exists(copy))
        std::filesystem::copy_file(SLEEPER_PATH, copy);
    return copy;
}

std::filesystem::path ProcessFixture::script(const std::string& name) const
{
    std::filesystem::path path = folder_ / name;
    write(path, "#!" + program("interpreter").string() + " --unbuffered\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

Child& ProcessFixture::start(const std::string& name, const std::vector<std::string>& arguments)
{
    const std::filesystem::path path = program(name);
    std::vector<std::string> all{path.string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return *children_.emplace_back(std::make_unique<Child>(path, all));
}

Child& ProcessFixture::startHeld(const std::string& name, const std::vector<std::string>& arguments)
{
    return *children_.emplace_back(Child::heldBeforeExec(program(name), arguments));
}

void ProcessFixture::fakeProcess(const std::string& id, const std::string& commandLine, const std::string& comm) const
{
    std::filesystem::create_directories(fakeRoot() / id);
    write(fakeRoot() / id / "cmdline", commandLine);
    write(fakeRoot() / id / "comm", comm + '\n');
    write(fakeRoot() / id / "stat", id + " (" + comm + ") S 1 1 1 0 -1 4194304 0");
}

void ProcessFixture::fakeSelf(ProcessId id) const
{
    std::filesystem::create_symlink(std::to_string(id), fakeRoot() / "self");
}

void ProcessFixture::showInFakeRoot(ProcessId id) const
{
    std::filesystem::create_directory_symlink("/proc/" + std::to_string(id), fakeRoot() / std::to_string(id));
}

std::vector<ProcessId> ProcessFixture::own(const std::vector<ProcessId>& ids) const
{
    std::vector<ProcessId> result;
    for (const ProcessId id : ids) {
        if (std::ranges::any_of(children_, [id](const auto& child) { return child->id() == id; }))
            result.push_back(id);
    }
    return result;
}

std::vector<ProcessId> ProcessFixture::ownPrinted(const std::vector<std::string>& command) const
{
    std::istringstream lines(output(command));
    std::vector<ProcessId> ids;
    for (ProcessId id = 0; lines >> id;)
        ids.push_back(id);
    return own(ids);
}

std::string ProcessFixture::output(const std::vector<std::string>& command)
{
    std::vector<std::string> arguments = command;
    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0)
        return {};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t id = 0;
    const int error = ::posix_spawnp(&id, arguments[0].c_str(), &actions, nullptr, pointers(arguments).data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipe[1]);

    std::string text;
    char chunk[4096];
    for (ssize_t count = 0; (count = ::read(pipe[0], chunk, sizeof chunk)) > 0;)
        text.append(chunk, static_cast<std::size_t>(count));
    ::close(pipe[0]);
    if (error == 0)
        ::waitpid(id, nullptr, 0);
    return text;
}

}  // namespace quenchly
