#include "showable_language.h"

#include <QFontMetrics>
#include <QString>
#include <algorithm>

#include "l10n.h"
#include "text_label.h"

namespace quenchly {
namespace {

constexpr int anySize = 15;

QString allTexts(AppLanguage language)
{
    QString texts;
    for (const auto& [key, text] : L10n::table(language))
        texts += QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return texts;
}

bool fontsShow(AppLanguage language)
{
    auto characters = allTexts(language).toUcs4();
    std::sort(characters.begin(), characters.end());
    const auto end = std::unique(characters.begin(), characters.end());
    const QFontMetrics font(panelFont(anySize));
    return std::all_of(characters.begin(), end, [&font](uint character) { return font.inFontUcs4(character); });
}

}  // namespace

std::string takeShowableLanguage()
{
    const AppLanguage language = L10n::language();
    if (language == AppLanguage::en || fontsShow(language))
        return {};
    L10n::testingLanguage = AppLanguage::en;
    const std::string package = language == AppLanguage::tl ? "fonts-dejavu-core" : "fonts-noto-cjk";
    return "no font has all characters of the language " + std::string(localeIdentifier(language)) +
           ", so that English is shown; the Debian package " + package + " brings one";
}

}  // namespace quenchly
