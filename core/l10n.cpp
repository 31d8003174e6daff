#include "l10n.h"

#include <algorithm>
#include <array>

#include "l10n_tables.h"

#ifdef __APPLE__
#include <CoreFoundation/CoreFoundation.h>
#else
#include <cstdlib>
#endif

namespace quenchly {

std::string_view localeIdentifier(AppLanguage language) noexcept
{
    switch (language) {
        case AppLanguage::tl:
            return "fil";
        case AppLanguage::zhHans:
            return "zh-Hans";
        case AppLanguage::zhHant:
            return "zh-Hant";
        default:
            return rawValue(language);
    }
}

namespace L10n {

std::optional<AppLanguage> testingLanguage;

namespace {

// Plain prefixes, tried in order: "jam" counts as Japanese and "kok" as Korean. The traditional Chinese prefixes
// stand before the general one.
constexpr std::array<std::pair<std::string_view, AppLanguage>, 10> tagPrefixes{{
    {"ja", AppLanguage::ja},
    {"ko", AppLanguage::ko},
    {"zh-hant", AppLanguage::zhHant},
    {"zh-tw", AppLanguage::zhHant},
    {"zh-hk", AppLanguage::zhHant},
    {"zh-mo", AppLanguage::zhHant},
    {"zh", AppLanguage::zhHans},
    {"tl", AppLanguage::tl},
    {"fil", AppLanguage::tl},
    {"en", AppLanguage::en},
}};

char normalized(char c) noexcept
{
    if (c == '_')
        return '-';
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::optional<std::string_view> find(std::span<const Entry> entries, std::string_view key)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [key](const Entry& e) { return e.key == key; });
    if (found == entries.end())
        return std::nullopt;
    return found->text;
}

/// The text that replaces a placeholder ('d' or '@'); none when the argument is missing or of the other kind.
std::optional<std::string> replacement(char placeholder, const Argument* argument)
{
    if (argument == nullptr)
        return std::nullopt;
    if (const auto* number = std::get_if<std::int64_t>(argument); number != nullptr && placeholder == 'd')
        return std::to_string(*number);
    if (const auto* text = std::get_if<std::string>(argument); text != nullptr && placeholder == '@')
        return *text;
    return std::nullopt;
}

#ifdef __APPLE__

/// A language tag; empty when it is longer than any that we know.
std::string utf8(CFStringRef tag)
{
    std::array<char, 256> buffer{};
    if (!CFStringGetCString(tag, buffer.data(), static_cast<CFIndex>(buffer.size()), kCFStringEncodingUTF8))
        return {};
    return buffer.data();
}

#else

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

#endif

}  // namespace

std::optional<AppLanguage> languageForTag(std::string_view tag)
{
    std::string normalizedTag(tag);
    std::transform(tag.begin(), tag.end(), normalizedTag.begin(), normalized);
    for (const auto& [prefix, language] : tagPrefixes)
        if (normalizedTag.starts_with(prefix))
            return language;
    return std::nullopt;
}

std::optional<AppLanguage> languageForCode(std::string_view code)
{
    const auto named = fromRawValue<AppLanguage>(code);
    return named ? named : languageForTag(code);
}

AppLanguage languageForPreferences(std::span<const std::string> preferredLanguages)
{
    for (const std::string& tag : preferredLanguages)
        if (const auto language = languageForTag(tag))
            return *language;
    return AppLanguage::en;
}

#ifdef __APPLE__

std::vector<std::string> preferredLanguages()
{
    std::vector<std::string> languages;
    const CFArrayRef tags = CFLocaleCopyPreferredLanguages();
    if (tags == nullptr)
        return languages;
    const CFIndex count = CFArrayGetCount(tags);
    for (CFIndex i = 0; i < count; ++i)
        languages.push_back(utf8(static_cast<CFStringRef>(CFArrayGetValueAtIndex(tags, i))));
    CFRelease(tags);
    return languages;
}

#else

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

#endif

AppLanguage language()
{
    return testingLanguage ? *testingLanguage : languageForPreferences(preferredLanguages());
}

std::string t(std::string_view key)
{
    if (const auto text = find(table(language()), key))
        return std::string(*text);
    return std::string(find(Tables::en, key).value_or(key));
}

std::string tf(std::string_view key, const std::vector<Argument>& arguments)
{
    std::string format = t(key);
    if (arguments.empty())
        return format;
    std::string result;
    std::size_t used = 0;
    for (std::size_t i = 0; i < format.size(); ++i) {
        const char next = format[i] == '%' && i + 1 < format.size() ? format[i + 1] : '\0';
        if (next == '%') {
            result += '%';
            ++i;
        } else if (next == 'd' || next == '@') {
            // A placeholder uses up its argument even when the kinds differ, so that the later ones stay aligned.
            const Argument* argument = used < arguments.size() ? &arguments[used++] : nullptr;
            result += replacement(next, argument).value_or(format.substr(i, 2));
            ++i;
        } else {
            result += format[i];
        }
    }
    return result;
}

std::span<const Entry> table(AppLanguage language)
{
    switch (language) {
        case AppLanguage::ja:
            return Tables::ja;
        case AppLanguage::tl:
            return Tables::tl;
        case AppLanguage::zhHans:
            return Tables::zhHans;
        case AppLanguage::zhHant:
            return Tables::zhHant;
        case AppLanguage::ko:
            return Tables::ko;
        case AppLanguage::en:
            break;
    }
    return Tables::en;
}

}  // namespace L10n
}  // namespace quenchly
