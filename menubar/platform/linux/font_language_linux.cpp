#include "font_language_linux.h"

#include <cstdlib>
#include <optional>
#include <string_view>

#include "child_process.h"
#include "enumeration.h"
#include "font_language.h"

namespace quenchly {
namespace {

constexpr const char* variable = "FC_LANG";

/// The languages as fontconfig names them.
constexpr auto fontLanguages = textsOfCases<AppLanguage>({
    {AppLanguage::en, "en"},
    {AppLanguage::ja, "ja"},
    {AppLanguage::tl, "fil"},
    {AppLanguage::zhHans, "zh-cn"},
    {AppLanguage::zhHant, "zh-tw"},
    {AppLanguage::ko, "ko"},
});

/// The environment before the variable was changed.
std::optional<std::map<std::string, std::string>> unchanged;

}  // namespace

// Fontconfig takes the language from there and from the locale only, and reads it whenever it looks at its files again.
void chooseFontsFor(AppLanguage language)
{
    unchanged = environmentVariables();
    setenv(variable, fontLanguages[static_cast<std::size_t>(language)].data(), 1);
}

std::map<std::string, std::string> environmentForOthers()
{
    return unchanged ? *unchanged : environmentVariables();
}

}  // namespace quenchly
