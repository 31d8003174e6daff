#include "process_output.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace quenchly {
namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view takeUntil(std::string_view& text, std::string_view separators)
{
    const std::string_view taken = text.substr(0, text.find_first_of(separators));
    text.remove_prefix(std::min(text.size(), taken.size() + 1));
    return taken;
}

std::string_view takeField(std::string_view& line)
{
    line.remove_prefix(std::min(line.size(), line.find_first_not_of(blanks)));
    return takeUntil(line, blanks);
}

std::optional<ProcessId> processId(std::string_view text)
{
    ProcessId id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    if (error != std::errc() || end != text.data() + text.size() || id <= 0)
        return std::nullopt;
    return id;
}

}  // namespace

std::vector<ProcessId> parsePgrepOutput(std::string_view output)
{
    std::vector<ProcessId> ids;
    while (!output.empty()) {
        std::string_view line = takeUntil(output, "\n");
        if (const auto id = processId(takeField(line)))
            ids.push_back(*id);
    }
    std::ranges::sort(ids);
    return ids;
}

std::map<ProcessId, std::string> parsePsStates(std::string_view output)
{
    std::map<ProcessId, std::string> states;
    while (!output.empty()) {
        std::string_view line = takeUntil(output, "\n");
        const auto id = processId(takeField(line));
        const std::string_view state = takeField(line);
        if (id && !state.empty())
            states[*id] = state;
    }
    return states;
}

}  // namespace quenchly
