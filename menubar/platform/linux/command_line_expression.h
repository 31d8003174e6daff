#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace re2 {
class RE2;
}

namespace quenchly {

/// A POSIX extended regular expression to be found in command lines. Text is UTF-8. Finding takes time in proportion to
/// the length of the line, whatever the expression: at the very worst half a second for 128 KiB. Writes nothing to
/// standard error. Objects belong to one thread each.
///
/// What RE2 refuses matches nothing: what is no expression, back references, `\w`, `\b` and the like, bounds above
/// 1,000, invalid UTF-8. So do expressions with a zero byte, longer than `longestPattern` or too large once compiled.
/// The rest is as pgrep has it, except that named classes are those of ASCII, collating elements (`[[.a.]]`) are not
/// known, and a backslash escapes within brackets too, means the sign after it (`\<` is "<"), and makes a code of some
/// letters and digits (`\n`, `\x61`).
class CommandLineExpression {
public:
    /// In bytes.
    static constexpr std::size_t longestPattern = 1024;

    explicit CommandLineExpression(const std::string& pattern);
    ~CommandLineExpression();
    CommandLineExpression(CommandLineExpression&&) noexcept;
    CommandLineExpression& operator=(CommandLineExpression&&) noexcept;

    /// Whether some part of the line is a match. `^` and `$` stand for the ends of the whole line.
    bool isIn(std::string_view line) const;

private:
    std::unique_ptr<const re2::RE2> compiled_;  // none: matches nothing
};

}  // namespace quenchly
