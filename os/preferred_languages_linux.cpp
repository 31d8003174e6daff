#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "preferred_languages.h"

namespace quenchly {
namespace {

std::string environmentValue(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

/// The locale that decides the language of messages; empty when none is set.
std::string messagesLocale()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (std::string value = environmentValue(name); !value.empty())
            return value;
    return {};
}

bool isUntranslated(std::string_view locale)
{
    return locale.empty() || locale == "C" || locale == "POSIX" || locale.starts_with("C.");
}

}  // namespace

std::vector<std::string> preferredLanguages()
{
    std::vector<std::string> languages;
    const std::string locale = messagesLocale();
    // An untranslated locale switches LANGUAGE off, as it does for gettext.
    if (!isUntranslated(locale)) {
        const std::string list = environmentValue("LANGUAGE");
        for (std::size_t start = 0; start < list.size();) {
            const std::size_t end = std::min(list.find(':', start), list.size());
            if (end > start)
                languages.push_back(list.substr(start, end - start));
            start = end + 1;
        }
    }
    if (!locale.empty())
        languages.push_back(locale);
    return languages;
}

}  // namespace quenchly
