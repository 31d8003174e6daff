#include "l10n.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "l10n_tables.h"
#include "language_environment.h"
#include "shown_language.h"

namespace quenchly {
namespace {

using testing::allLanguages;
using Tags = std::vector<std::string>;

struct Golden {
    std::string_view key;
    std::array<std::string_view, 6> texts;  // in the order of `allLanguages`
};

const Golden goldenLabels[] = {
    {"protection_targets",
     {"Ollama, MLX, LM Studio headless, llama.cpp. Never code editors, browsers, or Mail.",
      "Ollama、MLX、LM Studio headless、llama.cpp。コードエディタ、ブラウザ、Mailは対象外。",
      "Ollama, MLX, LM Studio headless, llama.cpp. 코드 편집기·브라우저·Mail은 제외.",
      "Ollama、MLX、LM Studio headless、llama.cpp。不会作用于代码编辑器、浏览器或邮件。",
      "Ollama、MLX、LM Studio headless、llama.cpp。不會作用於程式編輯器、瀏覽器或郵件。",
      "Ollama, MLX, LM Studio headless, llama.cpp. Hindi code editors, browsers, o Mail."}},
    {"check_for_updates",
     {"Check for Updates...", "アップデートを確認…", "업데이트 확인…", "检查更新…", "檢查更新…",
      "Tingnan ang Updates..."}},
    {"uninstall", {"Uninstall…", "アンインストール…", "제거…", "卸载…", "解除安裝…", "I-uninstall…"}},
    {"quit",
     {"Quit Quenchly", "Quenchlyを終了", "Quenchly 종료", "退出 Quenchly", "結束 Quenchly", "Isara ang Quenchly"}},
    {"start_background_checks",
     {"Start background checks", "バックグラウンドチェックを開始", "백그라운드 검사 시작", "启动后台检查",
      "啟動背景檢查", "Simulan ang background checks"}},
    {"unload_listed_ai",
     {"Unload listed AI", "対象AIをアンロード", "대상 AI 언로드", "卸载所列 AI", "卸載所列 AI",
      "I-unload ang listed AI"}},
    {"extra_memory_on_disk",
     {"extra memory on disk", "ディスク上の追加メモリ", "디스크 추가 메모리", "磁盘额外内存", "磁碟額外記憶體",
      "extra memory sa disk"}},
    {"protection_on",
     {"Protection On", "Protection オン", "Protection 켜짐", "Protection 开", "Protection 開", "Protection On"}},
    {"retaining_memory_on",
     {"Retaining memory: On", "メモリ保持: オン", "메모리 유지: 켜짐", "保留内存：开", "保留記憶體：開",
      "Retaining memory: On"}},
    {"cadence_quiet",
     {"Checks about every minute", "約1分ごとにチェック", "약 1분마다 검사", "大约每分钟检查一次", "大約每分鐘檢查一次",
      "Tungkol sa bawat minuto ang checks"}},
    {"set_aside_heading", {"SET ASIDE (%d)", "除外 (%d)", "제외 (%d)", "暂存 (%d)", "暫存 (%d)", "ITABI (%d)"}},
    {"acknowledging", {"Acknowledging…", "了解処理中…", "확인 중…", "正在确认…", "正在確認…", "Tina-acknowledge…"}},
    {"clear_all_n",
     {"Clear all (%d)", "すべて解除 (%d)", "모두 해제 (%d)", "全部清除 (%d)", "全部清除 (%d)", "I-clear lahat (%d)"}},
    {"auto_updates_off",
     {"Auto updates: Off", "自動アップデート確認: オフ", "자동 업데이트 확인: 꺼짐", "自动检查更新：关",
      "自動檢查更新：關", "Auto updates: Off"}},
    {"protection_off",
     {"Protection Off", "Protection オフ", "Protection 꺼짐", "Protection 关", "Protection 關", "Protection Off"}},
    {"checks_not_set_up",
     {"Checks not set up", "チェック未設定", "검사 미설정", "检查未设置", "檢查未設定",
      "Hindi pa naka-set ang checks"}},
    {"checking_in_a_moment",
     {"Checking in a moment.", "まもなくチェックします。", "곧 검사합니다.", "即将检查。", "即將檢查。",
      "Magche-check sandali."}},
    {"checking_now", {"Checking now", "チェック中", "검사 중", "正在检查", "正在檢查", "Nagche-check ngayon"}},
    {"protection_applies_to",
     {"Protection applies to", "Protectionの対象", "Protection 대상", "Protection 适用于", "Protection 適用於",
      "Sakop ng Protection"}},
    {"only_listed_ai",
     {"Only Ollama, MLX, LM Studio.", "Ollama、MLX、LM Studioのみ。", "Ollama, MLX, LM Studio만.",
      "仅 Ollama、MLX、LM Studio。", "僅 Ollama、MLX、LM Studio。", "Ollama, MLX, LM Studio lang."}},
    {"acknowledge", {"Acknowledge", "了解", "확인", "确认", "確認", "Acknowledge"}},
    {"open_at_login_on",
     {"Open at Login: On", "ログイン時に開く: オン", "로그인 시 열기: 켜짐", "登录时打开：开", "登入時開啟：開",
      "Buksan sa Login: On"}},
    {"open_at_login_off",
     {"Open at Login: Off", "ログイン時に開く: オフ", "로그인 시 열기: 꺼짐", "登录时打开：关", "登入時開啟：關",
      "Buksan sa Login: Off"}},
    {"auto_updates_on",
     {"Auto updates: On", "自動アップデート確認: オン", "자동 업데이트 확인: 켜짐", "自动检查更新：开",
      "自動檢查更新：開", "Auto updates: On"}},
    {"updates_not_configured",
     {"Updates not configured yet", "アップデートはまだ設定されていません", "업데이트가 아직 설정되지 않음",
      "尚未配置更新", "尚未設定更新", "Hindi pa naka-set ang updates"}},
    {"live_data", {"Live data", "ライブデータ", "라이브 데이터", "实时数据", "即時資料", "Live data"}},
    {"report_problem",
     {"Report a problem", "問題を報告", "문제 보고", "报告问题", "回報問題", "I-report ang problema"}},
    {"load", {"load", "負荷", "부하", "负载", "負載", "load"}},
    {"turn_on", {"Turn On", "オンにする", "켜기", "开启", "開啟", "I-on"}},
    {"turn_off", {"Turn Off", "オフにする", "끄기", "关闭", "關閉", "I-off"}},
    {"install", {"Install", "インストール", "설치", "安装", "安裝", "I-install"}},
    {"status", {"Status", "ステータス", "상태", "状态", "狀態", "Status"}},
    {"extra_memory_tip",
     {"Extra memory tip", "追加メモリのヒント", "추가 메모리 팁", "额外内存提示", "額外記憶體提示",
      "Tip sa extra memory"}},
    {"help", {"Help", "ヘルプ", "도움말", "帮助", "輔助說明", "Tulong"}},
    {"needs_tool",
     {"Needs the quenchly tool, which was not found", "quenchlyツールが必要ですが、見つかりません",
      "quenchly 도구가 필요하지만 찾을 수 없음", "需要 quenchly 工具，但未找到", "需要 quenchly 工具，但找不到",
      "Kailangan ang quenchly tool, pero hindi ito nahanap"}},
    {"needs_interpreter",
     {"Needs Node.js, which was not found", "Node.jsが必要ですが、見つかりません", "Node.js가 필요하지만 찾을 수 없음",
      "需要 Node.js，但未找到", "需要 Node.js，但找不到", "Kailangan ang Node.js, pero hindi ito nahanap"}},
    {"swap", {"swap", "スワップ", "스왑", "交换", "交換", "swap"}},
};

const std::set<std::string_view> sameAsEnglishInFilipino{"live_data",
                                                         "auto_updates",
                                                         "load",
                                                         "swap",
                                                         "extra_on",
                                                         "protection_on",
                                                         "protection_off",
                                                         "retaining_memory_on",
                                                         "retaining_memory",
                                                         "acknowledge",
                                                         "off",
                                                         "auto_updates_on",
                                                         "auto_updates_off",
                                                         "status",
                                                         "two_sentences",
                                                         "ok"};

/// What a language has in common with English: names, marks and words that it took over.
bool isSameAsEnglish(AppLanguage language, std::string_view key)
{
    return key == "copyright" || (language == AppLanguage::tl && sameAsEnglishInFilipino.contains(key)) ||
           (language == AppLanguage::ja && key == "ok") || (language == AppLanguage::ko && key == "two_sentences");
}

std::string lookUp(AppLanguage language, std::string_view key)
{
    L10n::testingLanguage = language;
    std::string text = L10n::t(key);
    L10n::testingLanguage.reset();
    return text;
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

bool isHelpKey(std::string_view key)
{
    return key.starts_with("help_");
}

std::vector<std::string> placeholders(std::string_view text)
{
    std::vector<std::string> found;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '%')
            found.emplace_back(text.substr(i++, 2));
    return found;
}

bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

std::size_t wordCount(std::string_view text)
{
    std::size_t words = 0;
    bool inWord = false;
    for (const char c : text) {
        const bool letter = std::isalpha(static_cast<unsigned char>(c)) != 0;
        words += letter && !inWord ? 1 : 0;
        inWord = c != ' ' && (inWord || letter);
    }
    return words;
}

/// Of well-formed UTF-8.
std::u32string codePointsOf(std::string_view utf8)
{
    std::u32string codePoints;
    for (const char byte : utf8) {
        const auto bits = static_cast<unsigned char>(byte);
        if ((bits & 0xC0) == 0x80)
            codePoints.back() = (codePoints.back() << 6) | (bits & 0x3F);
        else
            codePoints += bits < 0x80 ? bits : bits < 0xE0 ? bits & 0x1F : bits < 0xF0 ? bits & 0x0F : bits & 0x07;
    }
    return codePoints;
}

/// The most words that stand together without a letter or a mark of another script between them.
std::size_t longestAsciiRun(std::string_view text)
{
    std::size_t longest = 0;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = start;
        while (end < text.size() && isAscii(text[end]))
            ++end;
        longest = std::max(longest, wordCount(text.substr(start, end - start)));
        start = end + 1;
    }
    return longest;
}

std::vector<std::string> sentences(std::string_view text)
{
    std::vector<std::string> found;
    while (!text.empty()) {
        const std::size_t stop = text.find(". ");
        found.emplace_back(text.substr(0, stop == std::string_view::npos ? stop : stop + 1));
        text.remove_prefix(stop == std::string_view::npos ? text.size() : stop + 2);
    }
    return found;
}

std::string withoutEllipsis(std::string label)
{
    for (const std::string_view mark : {"...", "…"})
        if (label.ends_with(mark))
            label.resize(label.size() - mark.size());
    return label;
}

std::string upTo(const std::string& text, std::string_view mark)
{
    return text.substr(0, text.find(mark));
}

using L10nLookup = testing::InEnglish;

TEST(AppLanguage, EachHasItsRawValueAndItsLocale)
{
    const struct {
        AppLanguage language;
        std::string_view rawText;
        std::string_view locale;
    } rows[] = {
        {AppLanguage::en, "en", "en"},
        {AppLanguage::ja, "ja", "ja"},
        {AppLanguage::tl, "tl", "fil"},
        {AppLanguage::zhHans, "zhHans", "zh-Hans"},
        {AppLanguage::zhHant, "zhHant", "zh-Hant"},
        {AppLanguage::ko, "ko", "ko"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(rawValue(row.language), row.rawText);
        EXPECT_EQ(fromRawValue<AppLanguage>(row.rawText), row.language) << row.rawText;
        EXPECT_EQ(localeIdentifier(row.language), row.locale) << row.rawText;
    }
}

TEST(AppLanguage, NothingElseIsARawValue)
{
    for (const std::string_view text : {"", "zh-Hans", "zh-Hant", "zh", "fil", "EN", "en ", "fr"})
        EXPECT_EQ(fromRawValue<AppLanguage>(text), std::nullopt) << text;
}

TEST(L10n, TagsGiveTheirLanguage)
{
    const std::map<std::string_view, AppLanguage> expected{
        {"en", AppLanguage::en},
        {"en-GB", AppLanguage::en},
        {"EN_us.UTF-8", AppLanguage::en},
        {"ja", AppLanguage::ja},
        {"ja_JP.UTF-8", AppLanguage::ja},
        {"ko-KR", AppLanguage::ko},
        {"zh-Hant-TW", AppLanguage::zhHant},
        {"zh_TW", AppLanguage::zhHant},
        {"zh-HK", AppLanguage::zhHant},
        {"zh_MO.Big5", AppLanguage::zhHant},
        {"ZH-HANT", AppLanguage::zhHant},
        {"zh", AppLanguage::zhHans},
        {"zh-Hans-CN", AppLanguage::zhHans},
        {"zh_CN", AppLanguage::zhHans},
        {"zh-SG", AppLanguage::zhHans},
        {"zh-Hans-TW", AppLanguage::zhHans},
        {"tl", AppLanguage::tl},
        {"tl_PH", AppLanguage::tl},
        {"fil", AppLanguage::tl},
        {"fil-PH", AppLanguage::tl},
    };
    for (const auto& [tag, language] : expected)
        EXPECT_EQ(L10n::languageForTag(tag), language) << tag;
}

TEST(L10n, OtherTagsGiveNoLanguage)
{
    for (const std::string_view tag : {"", "fr", "de-DE", "C", "C.UTF-8", "POSIX", "j", "f-il", " en", "yue-Hant"})
        EXPECT_EQ(L10n::languageForTag(tag), std::nullopt) << tag;
}

TEST(L10n, TagsThatOnlyBeginLikeJapaneseOrKoreanCountAsThem)
{
    EXPECT_EQ(L10n::languageForTag("jam"), AppLanguage::ja);
    EXPECT_EQ(L10n::languageForTag("jam-JM"), AppLanguage::ja);
    EXPECT_EQ(L10n::languageForTag("kok-IN"), AppLanguage::ko);
}

TEST(L10n, TheFirstOfOurLanguagesWinsAndWithoutOneItIsEnglish)
{
    const std::pair<Tags, AppLanguage> rows[] = {
        {{"fr-FR", "ja-JP"}, AppLanguage::ja},
        {{"zh_TW", "en-US", "ja-JP"}, AppLanguage::zhHant},
        {{"en-US", "ja-JP"}, AppLanguage::en},
        {{"de-DE", "fr-FR"}, AppLanguage::en},
        {{}, AppLanguage::en},
    };
    for (const auto& [preferences, language] : rows)
        EXPECT_EQ(L10n::languageForPreferences(preferences), language) << ::testing::PrintToString(preferences);
}

TEST_F(L10nLookup, TestingLanguageOverridesTheSystem)
{
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        EXPECT_EQ(L10n::language(), language);
    }
}

TEST_F(L10nLookup, UnknownKeyComesBackAsItself)
{
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        EXPECT_EQ(L10n::t("no_such_key"), "no_such_key");
        EXPECT_EQ(L10n::t(""), "");
        EXPECT_EQ(L10n::tf("no_such_key", {std::int64_t{3}, std::string("x")}), "no_such_key");
    }
}

TEST_F(L10nLookup, CountsGoIntoTheirPlaceholder)
{
    EXPECT_EQ(L10n::tf("set_aside_heading", {std::int64_t{3}}), "SET ASIDE (3)");
    EXPECT_EQ(L10n::tf("clear_all_n", {std::int64_t{12}}), "Clear all (12)");
    L10n::testingLanguage = AppLanguage::tl;
    EXPECT_EQ(L10n::tf("set_aside_heading", {std::int64_t{3}}), "ITABI (3)");
    L10n::testingLanguage = AppLanguage::ja;
    EXPECT_EQ(L10n::tf("clear_all_n", {std::int64_t{2}}), "すべて解除 (2)");
}

TEST_F(L10nLookup, NumbersAreUngroupedDecimals)
{
    EXPECT_EQ(L10n::tf("%d", {std::int64_t{1234567}}), "1234567");
    EXPECT_EQ(L10n::tf("%d", {std::int64_t{-5}}), "-5");
    EXPECT_EQ(L10n::tf("%d", {std::numeric_limits<std::int64_t>::min()}), "-9223372036854775808");
}

TEST_F(L10nLookup, WithoutArgumentsTheFormatStaysAsItIs)
{
    EXPECT_EQ(L10n::tf("set_aside_heading", {}), "SET ASIDE (%d)");
    EXPECT_EQ(L10n::tf("100%% of %d", {}), "100%% of %d");
}

TEST_F(L10nLookup, ArgumentsAreUsedInOrder)
{
    EXPECT_EQ(L10n::tf("%@ has %d of %d", {std::string("a"), std::int64_t{1}, std::int64_t{2}}), "a has 1 of 2");
    EXPECT_EQ(L10n::tf("%d%%", {std::int64_t{90}}), "90%");
    EXPECT_EQ(L10n::tf("%@", {std::string("%d")}), "%d");
}

TEST_F(L10nLookup, PlaceholdersWithoutAFittingArgumentStay)
{
    EXPECT_EQ(L10n::tf("%d and %d", {std::int64_t{1}}), "1 and %d");
    EXPECT_EQ(L10n::tf("%d and %@", {std::string("one"), std::string("two")}), "%d and two");
    EXPECT_EQ(L10n::tf("%@", {std::int64_t{1}}), "%@");
}

TEST_F(L10nLookup, OtherPercentSignsAreCopied)
{
    EXPECT_EQ(L10n::tf("%", {std::int64_t{1}}), "%");
    EXPECT_EQ(L10n::tf("%s 5% %", {std::int64_t{1}}), "%s 5% %");
    EXPECT_EQ(L10n::tf("%%d", {std::int64_t{1}}), "%d");
    EXPECT_EQ(L10n::tf("%%%d", {std::int64_t{1}}), "%1");
}

TEST(L10nTables, LabelsReadAsAgreed)
{
    for (const Golden& golden : goldenLabels)
        for (std::size_t i = 0; i < allLanguages.size(); ++i)
            EXPECT_EQ(lookUp(allLanguages[i], golden.key), golden.texts[i]) << golden.key;
}

TEST(L10nTables, EveryTableIsTheOneOfItsLanguage)
{
    EXPECT_EQ(L10n::table(AppLanguage::en).data(), L10n::Tables::en.data());
    EXPECT_EQ(L10n::table(AppLanguage::ja).data(), L10n::Tables::ja.data());
    EXPECT_EQ(L10n::table(AppLanguage::tl).data(), L10n::Tables::tl.data());
    EXPECT_EQ(L10n::table(AppLanguage::zhHans).data(), L10n::Tables::zhHans.data());
    EXPECT_EQ(L10n::table(AppLanguage::zhHant).data(), L10n::Tables::zhHant.data());
    EXPECT_EQ(L10n::table(AppLanguage::ko).data(), L10n::Tables::ko.data());
}

TEST(L10nTables, SameKeysInTheSameOrder)
{
    const auto english = L10n::table(AppLanguage::en);
    ASSERT_EQ(english.size(), 99u);
    for (const AppLanguage language : allLanguages) {
        const auto table = L10n::table(language);
        ASSERT_EQ(table.size(), english.size()) << rawValue(language);
        for (std::size_t i = 0; i < english.size(); ++i)
            EXPECT_EQ(table[i].key, english[i].key) << rawValue(language);
    }
}

TEST(L10nTables, KeysAreUniqueAndStandInThreeBlocks)
{
    constexpr std::size_t labels = 36;
    constexpr std::size_t paragraphs = 21;
    const auto english = L10n::table(AppLanguage::en);
    std::set<std::string_view> keys;
    for (std::size_t i = 0; i < english.size(); ++i) {
        EXPECT_TRUE(keys.insert(english[i].key).second) << english[i].key;
        EXPECT_EQ(isHelpKey(english[i].key), i >= labels && i < labels + paragraphs) << english[i].key;
    }
}

TEST(L10nTables, LookupFindsEveryEntry)
{
    for (const AppLanguage language : allLanguages)
        for (const auto& entry : L10n::table(language))
            EXPECT_EQ(lookUp(language, entry.key), entry.text);
}

TEST(L10nTables, PlaceholdersMatchEnglish)
{
    const auto english = L10n::table(AppLanguage::en);
    for (const AppLanguage language : allLanguages)
        for (std::size_t i = 0; i < english.size(); ++i)
            EXPECT_EQ(placeholders(L10n::table(language)[i].text), placeholders(english[i].text))
                << rawValue(language) << ' ' << english[i].key;
}

TEST(L10nTables, TextsAreNeitherEmptyNorPadded)
{
    for (const AppLanguage language : allLanguages)
        for (const auto& [key, text] : L10n::table(language)) {
            ASSERT_FALSE(text.empty()) << rawValue(language) << ' ' << key;
            EXPECT_FALSE(text.front() == ' ' || text.back() == ' ' || contains(text, "  "))
                << rawValue(language) << ' ' << key;
        }
}

TEST(L10nTables, CopyrightIsTheSameEverywhere)
{
    for (const AppLanguage language : allLanguages)
        EXPECT_EQ(lookUp(language, "copyright"), "© 2026 Quenchly");
}

TEST(L10nTables, NoTextIsLeftInEnglish)
{
    const auto english = L10n::table(AppLanguage::en);
    for (const AppLanguage language : allLanguages) {
        if (language == AppLanguage::en)
            continue;
        for (std::size_t i = 0; i < english.size(); ++i) {
            const std::string_view key = english[i].key;
            EXPECT_EQ(L10n::table(language)[i].text == english[i].text, isSameAsEnglish(language, key))
                << rawValue(language) << ' ' << key;
        }
    }
}

TEST(L10nHelp, NoParagraphKeepsEnglishPassages)
{
    for (const AppLanguage language : {AppLanguage::ja, AppLanguage::ko, AppLanguage::zhHans, AppLanguage::zhHant})
        for (const auto& [key, text] : L10n::table(language))
            if (isHelpKey(key)) {
                EXPECT_LE(longestAsciiRun(text), 6u) << rawValue(language) << ' ' << key;
            }
}

TEST(L10nHelp, FilipinoKeepsNoEnglishSentence)
{
    const auto english = L10n::table(AppLanguage::en);
    for (std::size_t i = 0; i < english.size(); ++i)
        if (isHelpKey(english[i].key)) {
            for (const std::string& sentence : sentences(english[i].text))
                EXPECT_FALSE(contains(L10n::table(AppLanguage::tl)[i].text, sentence)) << sentence;
        }
}

TEST(L10nHelp, FilipinoAndKoreanHaveAsManySentencesAsEnglish)
{
    const auto english = L10n::table(AppLanguage::en);
    for (const AppLanguage language : {AppLanguage::tl, AppLanguage::ko})
        for (std::size_t i = 0; i < english.size(); ++i)
            if (isHelpKey(english[i].key)) {
                EXPECT_EQ(sentences(L10n::table(language)[i].text).size(), sentences(english[i].text).size())
                    << rawValue(language) << ' ' << english[i].key;
            }
}

TEST(L10nHelp, SentencesAreSeparatedAsTheLanguageDoes)
{
    for (const AppLanguage language : allLanguages) {
        const bool fullWidth =
            language == AppLanguage::ja || language == AppLanguage::zhHans || language == AppLanguage::zhHant;
        for (const auto& [key, text] : L10n::table(language)) {
            if (!isHelpKey(key))
                continue;
            EXPECT_TRUE(text.ends_with(fullWidth ? "。" : ".")) << rawValue(language) << ' ' << key;
            for (std::size_t i = 0; i + 1 < text.size(); ++i)
                EXPECT_TRUE(text[i] != '.' || (!fullWidth && text[i + 1] == ' ')) << rawValue(language) << ' ' << key;
            EXPECT_FALSE(contains(text, "。 ")) << rawValue(language) << ' ' << key;
        }
    }
}

TEST(L10nHelp, ProtectionKeepsItsName)
{
    const auto english = L10n::table(AppLanguage::en);
    for (const AppLanguage language : allLanguages)
        for (std::size_t i = 0; i < english.size(); ++i)
            if (contains(english[i].text, "Protection")) {
                EXPECT_TRUE(contains(L10n::table(language)[i].text, "Protection"))
                    << rawValue(language) << ' ' << english[i].key;
            }
}

TEST(L10nHelp, ProductNamesStay)
{
    const auto english = L10n::table(AppLanguage::en);
    for (const std::string_view name : {"Quenchly", "Ollama", "MLX", "LM Studio headless", "llama-server",
                                        "llama-cpp-server", "macOS", "Mac", "RAM", "CPU"})
        for (const AppLanguage language : allLanguages)
            for (std::size_t i = 0; i < english.size(); ++i)
                if (isHelpKey(english[i].key) && contains(english[i].text, name)) {
                    EXPECT_TRUE(contains(L10n::table(language)[i].text, name))
                        << rawValue(language) << ' ' << english[i].key << ' ' << name;
                }
}

/// Wordings that readers of the language stumbled over, and what took their place.
TEST(L10nHelp, ReviewedWordingsStay)
{
    const struct {
        AppLanguage language;
        std::string_view key;
        std::string_view right;
        std::string_view wrong;
    } rows[] = {
        {AppLanguage::ja, "help_protection_on", "MacとAIがCPUを奪い合わない", "MacがAIと"},
        {AppLanguage::ja, "help_retaining_memory", "MacとAIがCPUを奪い合うこと", "MacがAIと"},
        {AppLanguage::ja, "help_protection_on", "メモリも保持され、作業はそのまま続きます", "作業はその場で"},
        {AppLanguage::ja, "help_open_at_login", "別途「バックグラウンドチェックを開始」", "引き続き"},
        {AppLanguage::ja, "help_protection_applies_to", "次の対象AIを", "ローカルAI"},
        {AppLanguage::ja, "help_protection_applies_to", "場合にのみ対象になります", "含まれます"},
        {AppLanguage::ja, "help_set_aside", "「了解」をクリックするまで", "「了解」する"},
        {AppLanguage::ja, "help_set_aside", "「了解」をクリックすると、再び過負荷", "ペースを再び"},
        {AppLanguage::ja, "help_clear_all_aside", "すべての行に「了解」を一度に適用します", "一度に了解します"},
        {AppLanguage::ja, "help_swap_meter", "バーが伸びていくとき", "上がっていく"},
        {AppLanguage::ja, "help_swap_meter", "このバーは、", "これは、"},
        {AppLanguage::ko, "help_protection_on", "그 자리에서 억제하여 Mac과 AI가 CPU를 두고", "붙들어"},
        {AppLanguage::ko, "help_retaining_memory", "그 자리에서 억제하므로 Mac과 AI가 CPU를 두고", "붙들어"},
        {AppLanguage::ko, "help_protection_applies_to", "그 자리에서 억제합니다", "붙들어"},
        {AppLanguage::ko, "help_clear_all_aside", "모든 행에 ‘확인’을 한 번에 적용합니다", "확인합니다"},
        {AppLanguage::ko, "help_clear_all_aside", "적용하고 싶을 때", "적용하려고"},
        {AppLanguage::ko, "help_set_aside", "‘확인’을 클릭할 때까지", "‘확인’할"},
        {AppLanguage::ko, "help_set_aside", "‘확인’을 클릭하면", "‘확인’하면"},
        {AppLanguage::ko, "help_protection_off", "스왑 게이지를", "미터"},
        {AppLanguage::ko, "help_checks_not_set_up", "보이는 게이지는", "미터"},
        {AppLanguage::ko, "help_start_background_checks", "게이지만 보이고", "미터"},
        {AppLanguage::ko, "help_swap_meter", "막대가 길어지면", "올라가면"},
        {AppLanguage::ko, "help_open_at_login", "별도로", "여전히"},
        {AppLanguage::ko, "help_check_for_updates", "사용자 모르게", "몰래"},
        {AppLanguage::ko, "help_auto_updates", "켜짐 상태이면", "켜짐으로"},
        {AppLanguage::zhHans, "help_set_aside", "循环检查", "循环检测"},
        {AppLanguage::zhHans, "help_clear_all_aside", "从下次检查起适用于之前暂存的所有应用", "应用于"},
        {AppLanguage::zhHans, "help_clear_all_aside", "一次性确认", "一次确认"},
        {AppLanguage::zhHans, "help_quit", "仅退出菜单栏应用", "仅关闭"},
        {AppLanguage::zhHans, "help_quit", "“应用程序”文件夹或", "“应用程序”或"},
        {AppLanguage::zhHans, "help_open_at_login", "开启或关闭 Protection", "打开"},
        {AppLanguage::zhHans, "help_set_aside", "重新放慢", "放缓"},
        {AppLanguage::zhHans, "help_acknowledge", "重新放慢", "放缓"},
        {AppLanguage::zhHans, "help_swap_meter", "指示条变长时", "上升"},
        {AppLanguage::zhHant, "help_extra_memory_status", "危險水準", "危險程度"},
        {AppLanguage::zhHant, "help_live_data", "瀏覽器中開啟", "打開"},
        {AppLanguage::zhHant, "help_report_problem", "開啟一封", "打開"},
        {AppLanguage::zhHant, "help_quit", "重新開啟 Quenchly", "打開"},
        {AppLanguage::zhHant, "help_quit", "只會結束選單列", "關閉"},
        {AppLanguage::zhHant, "help_clear_all_aside", "從下次檢查起適用於", "套用到"},
        {AppLanguage::zhHant, "help_check_for_updates", "絕不會在你不知情時更新", "悄悄"},
        {AppLanguage::zhHant, "help_retaining_memory", "並非獨立的開關", "另外"},
        {AppLanguage::zhHant, "help_set_aside", "重新放慢", "放緩"},
        {AppLanguage::zhHant, "help_acknowledge", "重新放慢", "放緩"},
        {AppLanguage::zhHant, "help_swap_meter", "指示條變長時", "上升"},
        {AppLanguage::tl, "help_check_for_updates", "kung ii-install ito", "kung i-install"},
        {AppLanguage::tl, "help_auto_updates", "kung ii-install ito", "kung i-install"},
        {AppLanguage::tl, "help_set_aside", "hangga’t hindi mo kini-click ang “Acknowledge”", "nag-a-Acknowledge"},
        {AppLanguage::tl, "help_set_aside", "Kapag na-click mo ito", "nag-Acknowledge"},
        {AppLanguage::tl, "help_acknowledge", "sa “ITABI”", "sa ITABI"},
        {AppLanguage::tl, "help_clear_all_aside", "sa “ITABI”", "sa ITABI"},
        {AppLanguage::tl, "help_extra_memory_status", "porsiyento ng RAM", "RAM percent"},
        {AppLanguage::tl, "help_load_meter", "porsiyento ng CPU ng bawat process", "CPU percent"},
        {AppLanguage::tl, "help_live_data", "Para sa pagtingin lang ito", "Pang-view"},
        {AppLanguage::tl, "help_open_at_login", "sa login items mo", "iyong"},
    };
    for (const auto& row : rows) {
        const std::string text = lookUp(row.language, row.key);
        EXPECT_TRUE(contains(text, row.right)) << text;
        EXPECT_FALSE(contains(text, row.wrong)) << text;
    }
}

TEST(L10nHelp, ChineseSwapIsAnAmountWhereItIsNoTerm)
{
    for (const auto& [language, swap] :
         {std::pair<AppLanguage, std::string>{AppLanguage::zhHans, "交换"}, {AppLanguage::zhHant, "交換"}})
        for (const auto& [key, text] : L10n::table(language))
            for (std::size_t at = text.find(swap); isHelpKey(key) && at != text.npos; at = text.find(swap, at + 1)) {
                const std::string_view next = text.substr(at + swap.size());
                const bool fits = next.starts_with("用量") || next.starts_with("指示") || next.starts_with("文件") ||
                                  next.starts_with("檔") || next.starts_with("）");
                EXPECT_TRUE(fits) << text;
            }
}

TEST(L10nTables, SentencesOfAlertsEndAsTheLanguageDoes)
{
    for (const AppLanguage language : allLanguages)
        for (const auto& [key, text] : L10n::table(language)) {
            const bool fullWidth =
                language == AppLanguage::ja || language == AppLanguage::zhHans || language == AppLanguage::zhHant;
            if (key.ends_with("_text")) {
                EXPECT_TRUE(text.ends_with(fullWidth ? "。" : ".")) << rawValue(language) << ' ' << key;
            }
            if (key.ends_with("_question")) {
                EXPECT_TRUE(text.ends_with(fullWidth ? "？" : "?")) << rawValue(language) << ' ' << key;
            }
        }
}

TEST(L10nTables, ChineseHasASpaceBetweenItsCharactersAndLatinWords)
{
    const auto isHan = [](char32_t c) { return c >= 0x4E00 && c <= 0x9FFF; };
    const auto isLatin = [](char32_t c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '%'; };
    for (const AppLanguage language : {AppLanguage::zhHans, AppLanguage::zhHant})
        for (const auto& [key, text] : L10n::table(language)) {
            const std::u32string codePoints = codePointsOf(text);
            for (std::size_t i = 1; i < codePoints.size(); ++i) {
                const char32_t before = codePoints[i - 1];
                const bool runsTogether = (isHan(before) && isLatin(codePoints[i])) ||
                                          (isHan(codePoints[i]) && (isLatin(before) || before == '@'));
                EXPECT_FALSE(runsTogether) << key << ": " << text;
            }
        }
}

TEST(L10nTables, JapaneseHasNoSpacesBetweenItsCharactersAndLatinWords)
{
    for (const auto& [key, text] : L10n::table(AppLanguage::ja))
        for (std::size_t at = text.find(' '); at != text.npos; at = text.find(' ', at + 1)) {
            const bool isInLatin = isAscii(text[at - 1]) && isAscii(text[at + 1]);
            const bool isAfterColonOrName =
                text[at - 1] == ':' || text.substr(0, at).ends_with("Protection") || key == "copyright";
            EXPECT_TRUE(isInLatin || isAfterColonOrName || text[at + 1] == '(') << key << ": " << text;
        }
}

TEST(L10nTables, ApostrophesAreTypographic)
{
    for (const AppLanguage language : allLanguages)
        for (const auto& [key, text] : L10n::table(language))
            EXPECT_FALSE(contains(text, "'") || contains(text, "\"")) << rawValue(language) << ' ' << key;
}

TEST(L10nHelp, ParagraphsNameRowsAsTheirLabelsDo)
{
    const std::pair<std::string_view, std::string_view> mentions[] = {
        {"help_checks_not_set_up", "start_background_checks"},
        {"help_open_at_login", "start_background_checks"},
        {"help_extra_memory_tip", "unload_listed_ai"},
        {"help_retaining_memory", "protection_on"},
        {"help_set_aside", "acknowledge"},
        {"help_auto_updates", "check_for_updates"},
        {"uninstall_question_text", "open_at_login"},
        {"uninstalled_text", "open_at_login"},
    };
    for (const AppLanguage language : allLanguages)
        for (const auto& [paragraph, row] : mentions)
            EXPECT_TRUE(contains(lookUp(language, paragraph), withoutEllipsis(lookUp(language, row))))
                << rawValue(language) << ' ' << paragraph;
}

TEST(L10nHelp, ParagraphsNameTheHeadingAndTheMemoryLine)
{
    for (const AppLanguage language : allLanguages) {
        const std::string heading = upTo(lookUp(language, "set_aside_heading"), " (");
        EXPECT_TRUE(contains(lookUp(language, "help_acknowledge"), heading)) << rawValue(language);
        EXPECT_TRUE(contains(lookUp(language, "help_clear_all_aside"), heading)) << rawValue(language);
        const std::string memory = upTo(upTo(lookUp(language, "retaining_memory_on"), ":"), "：");
        EXPECT_TRUE(contains(lookUp(language, "help_protection_on"), memory)) << rawValue(language);
    }
}

#ifndef __APPLE__

class L10nEnvironment : public testing::LanguageEnvironment {};

TEST_F(L10nEnvironment, TheSystemsFirstLanguageOfOursIsInForce)
{
    set({});
    EXPECT_EQ(L10n::language(), AppLanguage::en);
    set({{"LANGUAGE", "fr:ja"}, {"LANG", "ko_KR.UTF-8"}});
    EXPECT_EQ(L10n::language(), AppLanguage::ja);
}

TEST_F(L10nEnvironment, AnUntranslatedLocaleMeansEnglish)
{
    for (const char* locale : {"C", "POSIX", "C.UTF-8", "C.utf8"}) {
        set({{"LANGUAGE", "ja"}, {"LANG", locale}});
        EXPECT_EQ(L10n::language(), AppLanguage::en);
    }
}

TEST_F(L10nEnvironment, ChangesTakeEffectAtTheNextLookup)
{
    set({{"LANG", "ja_JP.UTF-8"}});
    EXPECT_EQ(L10n::t("off"), "オフ");
    set({{"LANG", "fil_PH.UTF-8"}});
    EXPECT_EQ(L10n::language(), AppLanguage::tl);
    EXPECT_EQ(L10n::tf("set_aside_heading", {std::int64_t{4}}), "ITABI (4)");
    set({{"LANG", "fr_FR.UTF-8"}});
    EXPECT_EQ(L10n::t("off"), "Off");
}

#endif

}  // namespace
}  // namespace quenchly
