#include "breakable_words.h"

namespace quenchly {
namespace {

constexpr int longestRun = 40;  // code points

bool continuesCodePoint(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

bool isAsciiSpace(char byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
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

}  // namespace quenchly
