// Usage: process_table_bench [PROCESSES]
// Compares one look at the process table with one plain listing of /proc, on a machine with PROCESSES more sleepers.

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "proc_listing.h"
#include "process_table_linux.h"
#include "sleepers.h"
#include "timing.h"

namespace {

using namespace quenchly::bench;
using quenchly::ProcessTable;

/// In so many refreshes a table looks at every process.
constexpr int refreshesOfTheNew = 9;

/// What the application does once a second.
void look(ProcessTable& table)
{
    table.beginRefresh();
    table.matching("quenchly.ts check");
    table.matching("MacOS/quenchly check");
}

/// What an open panel asks for besides.
void lookForTargets(ProcessTable& table)
{
    std::vector<quenchly::ProcessId> ids = table.named("ollama");
    for (const auto& more : {table.matching("mlx_lm.server"), table.matching("MacOS/LM Studio --run-as-service"),
                             table.named("llama-server")})
        ids.insert(ids.end(), more.begin(), more.end());
    table.states(ids);
}

template <typename Before, typename Work>
void compare(const char* situation, int repetitions, const Before& before, const Work& work)
{
    std::vector<double> listings;
    std::vector<double> looks;
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        before();
        // Whichever goes second finds the kernel's entries warm.
        if (repetition % 2 == 0)
            listings.push_back(cost([] { listProcOnce(); }));
        looks.push_back(cost(work));
        if (repetition % 2 == 1)
            listings.push_back(cost([] { listProcOnce(); }));
    }
    const double listing = spreadOf(listings).median;
    const double whole = spreadOf(looks).median;
    std::printf("  %-34s listing %7.1f us   look %7.1f us   ratio %.2f\n", situation, listing, whole, whole / listing);
}

}  // namespace

int main(int argc, char** argv)
{
    const Sleepers sleepers(argc > 1 ? std::atoi(argv[1]) : 300);
    const auto made = quenchly::makeLinuxProcessTable();
    ProcessTable& table = *made;
    std::printf("process table alone, %d processes on the machine\n", listProcOnce());
    std::printf("  %-34s %44.1f us\n", "first look", cost([&] { look(table); }));

    const auto closed = [&] { look(table); };
    const auto open = [&] {
        look(table);
        lookForTargets(table);
    };
    const auto nothing = [] {};
    const auto wakeAll = [&] { sleepers.wakeAll(); };
    compare("new processes", refreshesOfTheNew, nothing, closed);
    compare("all asleep", 2000, nothing, closed);
    compare("all have run since", 100, wakeAll, closed);
    compare("all asleep, panel open", 2000, nothing, open);
    compare("all have run since, panel open", 100, wakeAll, open);
}
