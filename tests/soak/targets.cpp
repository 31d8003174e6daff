#include "targets.h"

#include <signal.h>

#include <utility>

#include "stand_in.h"

namespace quenchly::soak {

Targets::Targets(std::filesystem::path folder)
    : folder_(std::move(folder)),
      targets_{
          {"ollama", {"3600"}}, {"llama-server", {"3600"}}, {"mlx_lm.server", {"3600"}}, {"llama-cpp-server", {"3600"}}}
{
    std::filesystem::create_directories(folder_);
    for (const Target& target : targets_)
        std::filesystem::copy_file("/bin/sleep", folder_ / target.program);
}

Targets::~Targets()
{
    endAll();
}

void Targets::change(Dice& dice)
{
    Target& target = targets_[dice.below(targets_.size())];
    if (!target.process)
        target.process = startChild(folder_ / target.program, target.arguments);
    else if (dice.oneIn(2))
        killChild(target.process);
    else
        ::kill(*target.process, dice.oneIn(2) ? SIGSTOP : SIGCONT);
}

void Targets::endAll()
{
    for (Target& target : targets_)
        killChild(target.process);
}

}  // namespace quenchly::soak
