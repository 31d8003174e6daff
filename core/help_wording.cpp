#include "help_wording.h"

#include <array>
#include <utility>

namespace quenchly::HelpWording {
namespace {

constexpr std::string_view mac = "Mac";

constexpr std::string_view computer(AppLanguage language)
{
    switch (language) {
        case AppLanguage::ja:
            return "コンピュータ";
        case AppLanguage::zhHans:
            return "电脑";
        case AppLanguage::zhHant:
            return "電腦";
        case AppLanguage::ko:
            return "컴퓨터";
        case AppLanguage::en:
        case AppLanguage::tl:
            break;
    }
    return "computer";
}

/// What Korean puts behind a word that ends in a consonant, as 맥 does, and behind one that ends in a vowel.
constexpr std::array<std::pair<std::string_view, std::string_view>, 6> particles{
    {{"으로", "로"}, {"이나", "나"}, {"이 ", "가 "}, {"은 ", "는 "}, {"을 ", "를 "}, {"과 ", "와 "}}};

bool isLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isBeyondAscii(char c)
{
    return static_cast<unsigned char>(c) >= 0x80;
}

/// Where the word next stands by itself.
std::size_t findMac(std::string_view text)
{
    for (std::size_t at = text.find(mac); at != std::string_view::npos; at = text.find(mac, at + 1)) {
        const std::size_t end = at + mac.size();
        if ((at == 0 || !isLetter(text[at - 1])) && (end == text.size() || !isLetter(text[end])))
            return at;
    }
    return std::string_view::npos;
}

/// Chinese has spaces around a Latin word only.
void closeGaps(std::string& before, std::string_view& rest)
{
    if (before.size() >= 2 && before.back() == ' ' && isBeyondAscii(before[before.size() - 2]))
        before.pop_back();
    if (rest.size() >= 2 && rest.front() == ' ' && isBeyondAscii(rest[1]))
        rest.remove_prefix(1);
}

/// The particle at the beginning of `rest` that agrees with the new word, taken away from there.
std::string_view takeParticle(std::string_view& rest)
{
    for (const auto& [afterConsonant, afterVowel] : particles)
        if (rest.starts_with(afterConsonant)) {
            rest.remove_prefix(afterConsonant.size());
            return afterVowel;
        }
    return {};
}

}  // namespace

std::string withComputerForMac(std::string_view paragraph, AppLanguage language)
{
    const bool isChinese = language == AppLanguage::zhHans || language == AppLanguage::zhHant;
    std::string text;
    std::string_view rest = paragraph;
    for (std::size_t at = findMac(rest); at != std::string_view::npos; at = findMac(rest)) {
        text += rest.substr(0, at);
        rest.remove_prefix(at + mac.size());
        if (isChinese)
            closeGaps(text, rest);
        text += computer(language);
        if (language == AppLanguage::ko)
            text += takeParticle(rest);
    }
    return text.append(rest);
}

}  // namespace quenchly::HelpWording
