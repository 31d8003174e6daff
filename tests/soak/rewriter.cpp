#include "rewriter.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "broken_file.h"
#include "dice.h"
#include "targets.h"
#include "whole_files.h"

namespace quenchly::soak {
namespace {

namespace fs = std::filesystem;

/// How seldom things happen in a round, one in so many.
constexpr std::size_t changeOfAFile = 3;
constexpr std::size_t changeOfTargets = 40;
constexpr std::size_t runOfTheStandIn = 60;
constexpr std::size_t lossOfTheFolder = 500;

/// The stand-in checker takes about this long, in microseconds.
constexpr std::size_t longestRun = 4000;

constexpr std::size_t oldestCheck = 200;  // seconds

void answer()
{
    if (::write(STDOUT_FILENO, ".", 1) != 1)
        std::exit(0);
}

class Spoiler {
public:
    Spoiler(const fs::path& home, const fs::path& scratch, std::uint64_t seed)
        : home_{home}, dice_(seed), whole_(scratch / "situations"), targets_(scratch / "servers")
    {
        for (std::size_t place = 0; place < fileCount; ++place)
            files_.emplace_back(fileAt(home_, place));
    }
    ~Spoiler() { killChild(standIn_); }
    Spoiler(const Spoiler&) = delete;
    Spoiler& operator=(const Spoiler&) = delete;

    bool isReady() const { return !whole_.situations().empty(); }

    void obey(const std::string& line);

private:
    void spoil(Instant now);
    void spoilFolder();
    void runTool();
    void mend(std::size_t situation, std::optional<std::size_t> setAside, Instant lastCheck);

    CheckedHome home_;
    Dice dice_;
    WholeFiles whole_;
    Targets targets_;
    std::vector<BrokenFile> files_;
    std::optional<pid_t> standIn_;
};

void Spoiler::obey(const std::string& line)
{
    std::istringstream words(line);
    std::string command;
    std::int64_t time = 0;
    std::size_t situation = 0;
    std::size_t count = 0;
    words >> command >> time >> situation;
    const Instant now{std::chrono::seconds(time)};
    if (command == "spoil") {
        const bool meanwhile = dice_.oneIn(2);
        if (meanwhile)
            answer();
        spoil(now);
        if (!meanwhile)
            answer();
        return;
    }
    if (command == "targets")
        targets_.change(dice_);
    else
        mend(situation, words >> count ? std::optional(count) : std::nullopt, now);
    answer();
}

void Spoiler::spoil(Instant now)
{
    ::chmod(home_.stateFolder().c_str(), 0700);
    const std::string& situation = dice_.oneOf(whole_.situations());
    const Instant lastCheck = now - std::chrono::seconds(dice_.below(oldestCheck));
    for (std::size_t place = 0; place < files_.size(); ++place)
        if (dice_.oneIn(changeOfAFile))
            files_[place].change(dice_, whole_.text(situation, place, lastCheck));
    if (dice_.oneIn(changeOfTargets))
        targets_.change(dice_);
    if (dice_.oneIn(runOfTheStandIn))
        runTool();
    if (dice_.oneIn(lossOfTheFolder))
        spoilFolder();
}

void Spoiler::spoilFolder()
{
    std::error_code ignored;
    if (dice_.oneIn(2))
        ::chmod(home_.stateFolder().c_str(), 0);
    else
        fs::remove_all(home_.dataHome(), ignored);
}

void Spoiler::runTool()
{
    killChild(standIn_);
    const std::vector<std::string> commands[] = {
        {"check"},        {"enable"},        {"disable"}, {"install-agent"},
        {"remove-agent"}, {"unload-listed"}, {"serve"},   {"scenario", dice_.oneOf(whole_.situations())}};
    standIn_ = startStandIn(home_, dice_.oneOf(commands));
    if (dice_.oneIn(4))
        return;  // the next run ends it
    const timespec moment{0, static_cast<long>(dice_.below(longestRun) * 1000)};
    ::nanosleep(&moment, nullptr);
    killChild(standIn_);
}

void Spoiler::mend(std::size_t situation, std::optional<std::size_t> setAside, Instant lastCheck)
{
    killChild(standIn_);
    targets_.endAll();
    ::chmod(home_.stateFolder().c_str(), 0700);
    for (BrokenFile& file : files_)
        file.makeWhole(std::nullopt);
    std::error_code ignored;
    for (const fs::path& folder : {home_.stateFolder(), home_.launchAgents()})
        fs::remove_all(folder, ignored);
    fs::create_directories(home_.stateFolder());
    const std::string& name = whole_.situations()[situation % whole_.situations().size()];
    for (std::size_t place = 0; place < files_.size(); ++place)
        files_[place].makeWhole(place == 0 && setAside ? whole_.textWithSetAside(name, *setAside, lastCheck)
                                                       : whole_.text(name, place, lastCheck));
}

std::int64_t secondsOf(Instant instant)
{
    return std::chrono::duration_cast<std::chrono::seconds>(instant.time_since_epoch()).count();
}

}  // namespace

Rewriter::Rewriter(const CheckedHome& home, const fs::path& scratch, std::uint64_t seed)
{
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::system_error(errno, std::generic_category(), "socketpair");
    connection_ = ends[0];
    const std::string self = fs::read_symlink("/proc/self/exe");
    const std::string number = std::to_string(seed);
    process_ = ::fork();
    if (process_ == 0) {
        ::dup2(ends[1], STDIN_FILENO);
        ::dup2(ends[1], STDOUT_FILENO);
        ::execl(self.c_str(), self.c_str(), "rewriter", home.home.c_str(), scratch.c_str(), number.c_str(), nullptr);
        ::_exit(1);
    }
    ::close(ends[1]);
}

Rewriter::~Rewriter()
{
    ::close(connection_);
    ::waitpid(process_, nullptr, 0);
}

void Rewriter::tell(const std::string& line)
{
    char answered = 0;
    if (::write(connection_, line.data(), line.size()) != static_cast<ssize_t>(line.size()) ||
        ::read(connection_, &answered, 1) != 1)
        throw std::runtime_error("the rewriter is gone");
}

void Rewriter::spoil(Instant now)
{
    tell("spoil " + std::to_string(secondsOf(now)) + "\n");
}

void Rewriter::changeTargets()
{
    tell("targets\n");
}

void Rewriter::mend(std::size_t situation, Instant lastCheck)
{
    tell("mend " + std::to_string(secondsOf(lastCheck)) + " " + std::to_string(situation) + "\n");
}

void Rewriter::mendWithSetAside(std::size_t situation, std::size_t count, Instant lastCheck)
{
    tell("mend " + std::to_string(secondsOf(lastCheck)) + " " + std::to_string(situation) + " " +
         std::to_string(count) + "\n");
}

int runRewriter(const fs::path& home, const fs::path& scratch, std::uint64_t seed)
{
    Spoiler spoiler(home, scratch, seed);
    if (!spoiler.isReady()) {
        std::cerr << "the stand-in checker cannot be run\n";
        return 1;
    }
    for (std::string line; std::getline(std::cin, line);)
        spoiler.obey(line);
    return 0;
}

}  // namespace quenchly::soak
