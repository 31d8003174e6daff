#include "procfs_text.h"

#include <utf8proc.h>

#include <algorithm>
#include <charconv>

namespace quenchly {
namespace {

std::string_view nextWord(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size());
    return word;
}

/// The bytes of the first character; 0 when they are not UTF-8.
std::size_t characterLength(std::string_view bytes)
{
    utf8proc_int32_t character = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()),
                                         static_cast<utf8proc_ssize_t>(bytes.size()), &character);
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

}  // namespace

std::string printable(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        text += length == 0 || isControl(bytes.front()) ? std::string_view("?") : bytes.substr(0, length);
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::string joinedArguments(std::string arguments)
{
    arguments.resize(arguments.find_last_not_of('\0') + 1);
    std::ranges::replace(arguments, '\0', ' ');
    std::ranges::replace(arguments, '\n', ' ');
    return printable(arguments);
}

/// The name may itself contain ") R (": it ends at the last parenthesis.
std::optional<ProcessStat> parseStat(std::string_view stat)
{
    constexpr unsigned long kernelThread = 0x00200000;

    const std::size_t begin = stat.find('(');
    const std::size_t end = stat.rfind(')');
    if (begin == std::string_view::npos || end == std::string_view::npos || end < begin)
        return std::nullopt;

    std::string_view rest = stat.substr(end + 1);
    const std::string_view state = nextWord(rest);
    if (state.size() != 1)
        return std::nullopt;
    for (int skipped = 0; skipped < 5; ++skipped)
        nextWord(rest);
    const std::string_view word = nextWord(rest);
    unsigned long flags = 0;
    std::from_chars(word.data(), word.data() + word.size(), flags);
    return ProcessStat{stat.substr(begin + 1, end - begin - 1), state.front(), (flags & kernelThread) != 0};
}

}  // namespace quenchly
