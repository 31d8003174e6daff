#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "app_language.h"

namespace quenchly {

/// Every text that a person sees, by key. Lookups may run on any thread once `testingLanguage` is set.
namespace L10n {

struct Entry {
    std::string_view key;
    std::string_view text;
};

/// A value for a placeholder: a number for "%d", a text for "%@".
using Argument = std::variant<std::int64_t, std::string>;

/// Overrides the system's choice for every lookup; set it before lookups start.
extern std::optional<AppLanguage> testingLanguage;

/// The codes that `languageForCode` is offered by the command lines: "en, ja or ko" with " or " before the last.
std::string languageCodes(std::string_view beforeLast);

/// The language that a single tag such as "zh_TW" or "fil-PH" asks for; none when it is not one of ours.
std::optional<AppLanguage> languageForTag(std::string_view tag);

/// The language that a person names by its raw value ("zhHant") or by a tag ("zh-Hant"); none when it is not one of
/// ours.
std::optional<AppLanguage> languageForCode(std::string_view code);

/// The first language of ours in a user's list of preferred languages; English when there is none.
AppLanguage languageForPreferences(std::span<const std::string> preferredLanguages);

/// The language in force, found anew on every call: `testingLanguage`, else by what the system prefers.
AppLanguage language();

/// The text for a key in the language in force, else in English, else the key itself.
std::string t(std::string_view key);

/// The text for a key with its placeholders replaced in order. Without arguments the text is returned as it stands
/// ("%%" stays doubled); a placeholder without an argument of its kind stays as it is.
std::string tf(std::string_view key, const std::vector<Argument>& arguments);

/// The whole table of a language, in key order.
std::span<const Entry> table(AppLanguage language);

}  // namespace L10n
}  // namespace quenchly
