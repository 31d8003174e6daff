#include "markup.h"

namespace quenchly::demo {
namespace {

bool isControl(char character)
{
    return (character >= 0 && character < ' ' && character != '\n' && character != '\t') || character == '\x7f';
}

}  // namespace

std::string escaped(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        if (character == '&')
            result += "&amp;";
        else if (character == '<')
            result += "&lt;";
        else if (character == '>')
            result += "&gt;";
        else if (character == '"')
            result += "&quot;";
        else if (character == '\'')
            result += "&#39;";
        else if (isControl(character))
            result += "\xEF\xBF\xBD";
        else
            result += character;
    }
    return result;
}

}  // namespace quenchly::demo
