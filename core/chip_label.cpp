#include "chip_label.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "text.h"
#ifndef __APPLE__
#include "file_reading.h"
#endif

extern char** environ;

namespace quenchly::ChipLabel {
namespace {

/// Starts the command with its output going to `output` and its errors nowhere: a pipe that nobody reads would block
/// it. Returns 0 when it cannot be started.
pid_t spawnShell(const std::string& commandLine, int output)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string shellName = "/bin/sh";
    std::string option = "-c";
    std::string command = commandLine;
    char* const arguments[] = {shellName.data(), option.data(), command.data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawn(&child, shellName.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : 0;
}

std::string readToEnd(int fd)
{
    std::string bytes;
    std::array<char, 4096> buffer;
    for (;;) {
        const ssize_t got = read(fd, buffer.data(), buffer.size());
        if (got > 0)
            bytes.append(buffer.data(), static_cast<std::size_t>(got));
        else if (got == 0 || errno != EINTR)
            return bytes;
    }
}

void waitFor(pid_t child)
{
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

std::string without(std::string text, std::string_view part)
{
    return replacingAll(text, part, "");
}

#ifndef __APPLE__
std::string fileText(const char* path)
{
    return readFile(path).bytes;
}

/// The value of the first "model name : ..." line.
std::string processorBrand()
{
    const std::string text = fileText("/proc/cpuinfo");
    const auto key = text.find("model name");
    const auto colon = text.find(':', key == std::string::npos ? text.size() : key);
    if (colon == std::string::npos)
        return {};
    return std::string(trimmed(std::string_view(text).substr(colon + 1, text.find('\n', colon) - colon - 1)));
}
#endif

}  // namespace

std::string shell(const std::string& commandLine)
{
    int ends[2];
    if (pipe(ends) != 0)
        return {};
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    fcntl(ends[1], F_SETFD, FD_CLOEXEC);
    const pid_t child = spawnShell(commandLine, ends[1]);
    close(ends[1]);
    std::string output = child > 0 ? readToEnd(ends[0]) : std::string();
    close(ends[0]);
    if (child > 0)
        waitFor(child);
    return isValidUtf8(output) ? std::string(trimmed(output)) : std::string();
}

std::string normalize(std::string_view brand)
{
    std::string text(brand);
    for (const char* decoration : {"Apple ", "(R)", "(TM)", " CPU", " Processor"})
        text = without(std::move(text), decoration);
    return std::string(trimmed(text));
}

std::string modelFamily(std::string_view fromModel)
{
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 9> families{{
        {"macmini", "Mac mini"},
        {"macbookpro", "MacBook Pro"},
        {"macbookair", "MacBook Air"},
        {"macbook", "MacBook"},
        {"imacpro", "iMac Pro"},
        {"imac", "iMac"},
        {"macpro", "Mac Pro"},
        {"macstudio", "Mac Studio"},
        {"mac", "Mac"},
    }};
    const std::string_view model = trimmed(fromModel);
    const std::string prefix = lowercased(model.substr(0, model.find_first_of("0123456789,")));
    for (const auto& [known, family] : families)
        if (prefix == known)
            return std::string(family);
    return std::string(model);
}

Facts facts()
{
#ifdef __APPLE__
    return {.brand = shell("sysctl -n machdep.cpu.brand_string"), .model = shell("sysctl -n hw.model")};
#else
    return {.brand = processorBrand(),
            .model = std::string(trimmed(fileText("/sys/devices/virtual/dmi/id/product_name")))};
#endif
}

std::string label(const Facts& facts)
{
    const std::string chip = normalize(facts.brand);
    const std::string family = modelFamily(facts.model);
    if (chip.empty())
        return family;
    return family.empty() ? chip : chip + " " + family;
}

std::string machine()
{
    return label(facts());
}

}  // namespace quenchly::ChipLabel
