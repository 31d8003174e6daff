#include "command_line_expression.h"

#include <re2/re2.h>

namespace quenchly {
namespace {

/// The time of the worst lines grows with the size of the program: 128 KiB take half a second at this one and seconds
/// at the largest that RE2 would make. A plain character takes one instruction.
constexpr int largestProgram = 512;

/// What a line leads to is remembered in a third of it. Less makes the worst lines slower, and a table keeps dozens of
/// expressions.
constexpr int mostMemory = 2 * 1024 * 1024;

re2::RE2::Options options()
{
    re2::RE2::Options options;
    options.set_posix_syntax(true);
    options.set_one_line(true);
    options.set_dot_nl(true);
    options.set_never_capture(true);
    options.set_log_errors(false);
    options.set_max_mem(mostMemory);
    return options;
}

/// RE2 tells of expressions of a million parts on standard error even when told not to.
bool isOffered(const std::string& pattern)
{
    return pattern.size() <= CommandLineExpression::longestPattern && pattern.find('\0') == std::string::npos;
}

}  // namespace

CommandLineExpression::CommandLineExpression(const std::string& pattern)
{
    if (!isOffered(pattern))
        return;
    auto compiled = std::make_unique<const re2::RE2>(pattern, options());
    if (compiled->ok() && compiled->ProgramSize() <= largestProgram)
        compiled_ = std::move(compiled);
}

CommandLineExpression::~CommandLineExpression() = default;
CommandLineExpression::CommandLineExpression(CommandLineExpression&&) noexcept = default;
CommandLineExpression& CommandLineExpression::operator=(CommandLineExpression&&) noexcept = default;

bool CommandLineExpression::isIn(std::string_view line) const
{
    return compiled_ && re2::RE2::PartialMatch({line.data(), line.size()}, *compiled_);
}

}  // namespace quenchly
