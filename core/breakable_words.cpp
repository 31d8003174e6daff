#include "breakable_words.h"

namespace quenchly {
namespace {

constexpr int longestRun = 40;  // code points
constexpr std::size_t longestPrefix = 2;

bool continuesCodePoint(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

bool isAsciiSpace(char byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

bool isLetter(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

/// Whether `before` ends in a word of a few letters.
bool endsInPrefix(std::string_view before)
{
    std::size_t letters = 0;
    while (letters < before.size() && isLetter(before[before.size() - 1 - letters]))
        ++letters;
    const bool isWord = letters == before.size() || !isDigit(before[before.size() - 1 - letters]);
    return letters > 0 && letters <= longestPrefix && isWord;
}

}  // namespace

std::string withBreakableWords(std::string_view utf8)
{
    std::string broken;
    int run = 0;
    for (const char byte : utf8) {
        if (isAsciiSpace(byte)) {
            run = 0;
        } else if (!continuesCodePoint(byte) && ++run > longestRun) {
            broken += "\u200B";
            run = 1;
        }
        broken += byte;
    }
    return broken;
}

std::string withUnbrokenPrefixes(std::string_view utf8)
{
    std::string joined;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        joined += utf8[i];
        if (utf8[i] == '-' && i + 1 < utf8.size() && isLetter(utf8[i + 1]) && endsInPrefix(utf8.substr(0, i)))
            joined += "\u2060";
    }
    return joined;
}

}  // namespace quenchly
