#include "process_facts.h"

#include <time.h>

#include <filesystem>
#include <iterator>
#include <sstream>
#include <string>

#include "file_reading.h"

namespace quenchly::bench {
namespace {

namespace fs = std::filesystem;

fs::path folderOf(pid_t process)
{
    return fs::path("/proc") / std::to_string(process);
}

/// Empty when the process or thread has just ended, for which a stream would throw.
std::string contentOf(const fs::path& file)
{
    return readFile(file).bytes;
}

/// The number behind `name` at the start of a line; 0 when there is none.
std::int64_t numberOf(const std::string& text, const std::string& name)
{
    const std::size_t at = ('\n' + text).find('\n' + name);
    return at == std::string::npos ? 0 : std::stoll(text.substr(at + name.size()));
}

double processorMilliseconds(pid_t process)
{
    clockid_t clock;
    timespec time;
    if (::clock_getcpuclockid(process, &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        return 0;
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

std::int64_t childFaultsOf(pid_t process)
{
    const std::string stat = contentOf(folderOf(process) / "stat");
    std::istringstream fields(stat.substr(stat.rfind(')') + 1));
    std::string skipped;
    for (int field = 3; field < 11; ++field)
        fields >> skipped;
    std::int64_t faults = 0;
    fields >> faults;
    return faults;
}

int countIn(const fs::path& folder)
{
    std::error_code ignored;
    int count = 0;
    for (auto entry = fs::directory_iterator(folder, ignored); entry != fs::directory_iterator();
         entry.increment(ignored))
        ++count;
    return count;
}

int wordsIn(const std::string& text)
{
    std::istringstream words(text);
    return static_cast<int>(std::distance(std::istream_iterator<std::string>(words), {}));
}

}  // namespace

std::int64_t startedOnMachine()
{
    return numberOf(contentOf("/proc/stat"), "processes ");
}

ProcessFacts factsOf(pid_t process)
{
    const fs::path folder = folderOf(process);
    const std::string io = contentOf(folder / "io");
    ProcessFacts facts{.processorMilliseconds = processorMilliseconds(process),
                       .writeCalls = numberOf(io, "syscw:"),
                       .bytesToDisk = numberOf(io, "write_bytes:"),
                       .childFaults = childFaultsOf(process),
                       .descriptors = countIn(folder / "fd")};
    std::error_code ignored;
    for (const auto& thread : fs::directory_iterator(folder / "task", ignored)) {
        facts.waits += numberOf(contentOf(thread.path() / "status"), "voluntary_ctxt_switches:");
        facts.children += wordsIn(contentOf(thread.path() / "children"));
        ++facts.threads;
    }
    return facts;
}

Memory memoryOf(pid_t process)
{
    const std::string text = contentOf(folderOf(process) / "smaps_rollup");
    return {.proportionalKiB = numberOf(text, "Pss:"), .privateKiB = numberOf(text, "Private_Dirty:")};
}

}  // namespace quenchly::bench
