// A tool for the tests. It appends what it was given as lines of JSON to $RECORDING_FILE, when it starts and when it
// ends, and does what $RECORDING_BEHAVIOUR says in between.

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

extern char** environ;

namespace {

using Json = nlohmann::json;

constexpr unsigned longestLife = 120;  // seconds; a test that fails leaves no process for good
constexpr int signalsToLookAt = 32;

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

Json environment()
{
    Json variables = Json::object();
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const auto equals = text.find('=');
        variables[text.substr(0, equals)] = text.substr(equals + 1);
    }
    return variables;
}

Json inheritedDescriptors()
{
    Json numbers = Json::array();
    DIR* folder = opendir("/dev/fd");
    while (const dirent* entry = readdir(folder)) {
        const int number = std::atoi(entry->d_name);
        if (number > STDERR_FILENO && number != dirfd(folder))
            numbers.push_back(number);
    }
    closedir(folder);
    return numbers;
}

bool streamsAreNull()
{
    struct stat null {};
    stat("/dev/null", &null);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        struct stat actual {};
        if (fstat(stream, &actual) != 0 || actual.st_rdev != null.st_rdev)
            return false;
    }
    return true;
}

Json blockedSignals()
{
    Json numbers = Json::array();
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    for (int number = 1; number < signalsToLookAt; ++number)
        if (sigismember(&mask, number) == 1)
            numbers.push_back(number);
    return numbers;
}

Json ignoredSignals()
{
    Json numbers = Json::array();
    for (int number = 1; number < signalsToLookAt; ++number) {
        struct sigaction action {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
            numbers.push_back(number);
    }
    return numbers;
}

void record(const Json& event)
{
    const std::string line = event.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    const int file = open(variable("RECORDING_FILE").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    // One write, so that the lines of tools that run at once never mix.
    if (file < 0 || write(file, line.data(), line.size()) < 0)
        std::exit(3);
    close(file);
}

void waitAtTheGate()
{
    const int gate = open(variable("RECORDING_GATE").c_str(), O_RDONLY);
    char pass = 0;
    if (gate < 0 || read(gate, &pass, 1) < 0)
        std::exit(3);
    close(gate);
}

void printAGigabyte()
{
    const std::string megabyte(1 << 20, 'x');
    for (int i = 0; i < 1024; ++i)
        if (write(i % 2 == 0 ? STDOUT_FILENO : STDERR_FILENO, megabyte.data(), megabyte.size()) < 0)
            std::exit(3);
}

}  // namespace

int main(int argc, char** argv)
{
    alarm(longestLife);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    record({{"event", "start"},
            {"arguments", arguments},
            {"environment", environment()},
            {"process", getpid()},
            {"leadsSession", getsid(0) == getpid()},
            {"streamsAreNull", streamsAreNull()},
            {"descriptors", inheritedDescriptors()},
            {"blockedSignals", blockedSignals()},
            {"ignoredSignals", ignoredSignals()}});
    const std::string behaviour = variable("RECORDING_BEHAVIOUR");
    if (behaviour == "hang")
        waitAtTheGate();
    if (behaviour == "killed")
        raise(SIGKILL);
    if (behaviour == "flood")
        printAGigabyte();
    record({{"event", "end"}, {"arguments", arguments}});
    return behaviour == "fail" ? 1 : 0;
}
