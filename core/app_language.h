#pragma once

#include <string_view>

#include "enumeration.h"

namespace quenchly {

/// The languages that the application speaks, in the order of the tables.
enum class AppLanguage { en, ja, tl, zhHans, zhHant, ko };

template <>
inline constexpr auto rawValues<AppLanguage> = textsOfCases<AppLanguage>({
    {AppLanguage::en, "en"},
    {AppLanguage::ja, "ja"},
    {AppLanguage::tl, "tl"},
    {AppLanguage::zhHans, "zhHans"},
    {AppLanguage::zhHant, "zhHant"},
    {AppLanguage::ko, "ko"},
});

/// The codes by which the command lines name the languages: the identifiers of the locales that format their numbers.
/// Filipino is stored as "tl" and formats as "fil". The build reads this table for the manual pages and the bundle.
inline constexpr auto localeIdentifiers = textsOfCases<AppLanguage>({
    {AppLanguage::en, "en"},
    {AppLanguage::ja, "ja"},
    {AppLanguage::tl, "fil"},
    {AppLanguage::zhHans, "zh-Hans"},
    {AppLanguage::zhHant, "zh-Hant"},
    {AppLanguage::ko, "ko"},
});

constexpr std::string_view localeIdentifier(AppLanguage language) noexcept
{
    return localeIdentifiers[static_cast<std::size_t>(language)];
}

}  // namespace quenchly
