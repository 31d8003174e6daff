#include "l10n.h"

#include <algorithm>
#include <array>

#include "l10n_tables.h"
#include "preferred_languages.h"

namespace quenchly {

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

}  // namespace

std::string languageCodes(std::string_view beforeLast)
{
    std::string codes(localeIdentifiers.front());
    for (std::size_t i = 1; i < localeIdentifiers.size(); ++i)
        codes.append(i + 1 < localeIdentifiers.size() ? ", " : beforeLast).append(localeIdentifiers[i]);
    return codes;
}

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
