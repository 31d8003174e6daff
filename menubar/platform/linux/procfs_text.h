#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quenchly {

/// As pgrep prints text: "?" for control characters and for bytes that are not UTF-8.
std::string printable(std::string_view bytes);

/// The command line that pgrep searches: the arguments of a "cmdline" file joined by blanks, printable.
std::string joinedArguments(std::string arguments);

/// Of a "stat" file.
struct ProcessStat {
    std::string_view name;  ///< the recorded one, up to 15 bytes
    char state;
    bool isKernelThread;
};

/// Nothing for what is no such file. The name lasts as long as the text.
std::optional<ProcessStat> parseStat(std::string_view stat);

}  // namespace quenchly
