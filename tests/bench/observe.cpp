// Usage: observe SECONDS NAME=PROCESS...
// Watches running programs side by side and compares each with those named i3status, i3status-full, conky and bare-qt.
// 0 seconds: only their memory.

#include <time.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "process_facts.h"
#include "timing.h"

namespace {

using namespace quenchly::bench;

/// The spread of a program's load is that of its shares of this length, in seconds.
constexpr int shareLength = 10;

struct Observed {
    std::string name;
    pid_t process = 0;
    ProcessFacts begin;
    ProcessFacts end;
    Memory memory;
    double shareBegin = 0;
    std::vector<double> shares;

    double load(double seconds) const { return (end.processorMilliseconds - begin.processorMilliseconds) / seconds; }
};

/// Of an ended program nothing can be read any more.
void requireRunning(const Observed& program)
{
    if (factsOf(program.process).threads > 0)
        return;
    std::fprintf(stderr, "%s has ended\n", program.name.c_str());
    std::exit(1);
}

std::vector<Observed> parse(const std::vector<std::string>& arguments)
{
    std::vector<Observed> programs;
    for (const std::string& argument : arguments) {
        const std::size_t equals = argument.find('=');
        if (equals == std::string::npos)
            std::exit(2);
        programs.push_back({.name = argument.substr(0, equals), .process = std::atoi(argument.c_str() + equals + 1)});
        requireRunning(programs.back());
    }
    return programs;
}

double now()
{
    timespec time;
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void waitSeconds(int seconds)
{
    timespec left{seconds, 0};
    while (::nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

/// Returns the seconds that have really passed.
double observe(std::vector<Observed>& programs, int seconds)
{
    const double start = now();
    for (Observed& program : programs) {
        program.begin = factsOf(program.process);
        program.shareBegin = program.begin.processorMilliseconds;
    }
    for (int passed = 0; passed < seconds;) {
        const int length = std::min(shareLength, seconds - passed);
        waitSeconds(length);
        passed += length;
        for (Observed& program : programs) {
            const double total = factsOf(program.process).processorMilliseconds;
            program.shares.push_back((total - program.shareBegin) / length);
            program.shareBegin = total;
        }
    }
    for (Observed& program : programs) {
        requireRunning(program);
        program.end = factsOf(program.process);
        program.memory = memoryOf(program.process);
    }
    return now() - start;
}

const Observed* named(const std::vector<Observed>& programs, const std::string& name)
{
    const auto found = std::ranges::find(programs, name, &Observed::name);
    return found == programs.end() ? nullptr : &*found;
}

std::string ratio(double value, double reference)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value / reference);
    return reference > 0 ? text : "-";
}

/// The programs that the others' processor time is compared with.
std::vector<const Observed*> references(const std::vector<Observed>& programs)
{
    std::vector<const Observed*> found;
    for (const char* name : {"i3status", "i3status-full", "conky"})
        if (const Observed* reference = named(programs, name))
            found.push_back(reference);
    return found;
}

void printLoad(const std::vector<Observed>& programs, double seconds)
{
    const std::vector<const Observed*> compared = references(programs);
    std::printf("  %-24s %7s %18s", "processor time", "ms/s", "(10 s shares)");
    for (const Observed* reference : compared)
        std::printf(" %15s", ("x " + reference->name).c_str());
    std::printf(" %8s %8s\n", "waits/s", "threads");
    for (const Observed& program : programs) {
        const Spread spread = spreadOf(program.shares);
        std::printf("  %-24s %7.3f   (%.3f to %.3f)", program.name.c_str(), program.load(seconds), spread.lowest,
                    spread.highest);
        for (const Observed* reference : compared)
            std::printf(" %15s", ratio(program.load(seconds), reference->load(seconds)).c_str());
        std::printf(" %8.2f %8d\n", static_cast<double>(program.end.waits - program.begin.waits) / seconds,
                    program.end.threads);
    }
}

const char* startedChildren(const Observed& program)
{
    const bool any = program.end.children > 0 || program.end.childFaults > program.begin.childFaults;
    return any ? "yes" : "none";
}

void printTraces(const std::vector<Observed>& programs)
{
    std::printf("  %-24s %12s %14s %16s %10s\n", "what it leaves behind", "descriptors", "bytes to disk", "write calls",
                "children");
    for (const Observed& program : programs)
        std::printf(
            "  %-24s %5d to %3d %14lld %16lld %10s\n", program.name.c_str(), program.begin.descriptors,
            program.end.descriptors, static_cast<long long>(program.end.bytesToDisk - program.begin.bytesToDisk),
            static_cast<long long>(program.end.writeCalls - program.begin.writeCalls), startedChildren(program));
}

void printMemory(const std::vector<Observed>& programs)
{
    const Observed* reference = named(programs, "bare-qt");
    std::printf("  %-24s %16s %12s %12s\n", "memory, side by side", "proportional", "x bare Qt", "private");
    for (const Observed& program : programs)
        std::printf("  %-24s %12.1f MiB %12s %8.1f MiB\n", program.name.c_str(),
                    static_cast<double>(program.memory.proportionalKiB) / 1024,
                    ratio(static_cast<double>(program.memory.proportionalKiB),
                          reference ? static_cast<double>(reference->memory.proportionalKiB) : 0)
                        .c_str(),
                    static_cast<double>(program.memory.privateKiB) / 1024);
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + std::min(argc, 2), argv + argc);
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 0;
    std::vector<Observed> programs = parse(arguments);
    if (programs.empty() || seconds < 0)
        return 2;
    if (seconds > 0) {
        const std::int64_t startedBefore = startedOnMachine();
        const double passed = observe(programs, seconds);
        std::printf("  %.2f processes and threads started on the machine a second\n",
                    static_cast<double>(startedOnMachine() - startedBefore) / passed);
        printLoad(programs, passed);
        printTraces(programs);
    } else {
        for (Observed& program : programs)
            program.memory = memoryOf(program.process);
    }
    printMemory(programs);
}
