#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "menu_content.h"
#include "menu_content_fixture.h"

namespace quenchly {
namespace {

using testing::allLanguages;
using testing::MenuContentTest;
using testing::setAsideProcess;

using SixTexts = std::vector<std::string>;  // in the order of `allLanguages`

template <class Text>
SixTexts inSixLanguages(const Text& text)
{
    SixTexts texts;
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        texts.push_back(text());
    }
    return texts;
}

TEST_F(MenuContentTest, TheLockupIsSpokenInSixLanguages)
{
    const auto lockup = [this] { return content().header.lockup; };
    EXPECT_EQ(inSixLanguages(lockup), (SixTexts{"Protection On", "Protection オン", "Protection 켜짐", "Protection 开",
                                                "Protection 開", "Protection On"}));
    protectionOff();
    EXPECT_EQ(inSixLanguages(lockup), (SixTexts{"Protection Off", "Protection オフ", "Protection 꺼짐", "Protection 关",
                                                "Protection 關", "Protection Off"}));
    notSetUp();
    EXPECT_EQ(inSixLanguages(lockup), (SixTexts{"Checks not set up", "チェック未設定", "검사 미설정", "检查未设置",
                                                "檢查未設定", "Hindi pa naka-set ang checks"}));
}

TEST_F(MenuContentTest, TheLastCheckIsSpokenInSixLanguages)
{
    const auto lastCheck = [this] { return content().header.lastCheck; };
    status.lastCheckISO.reset();
    EXPECT_EQ(inSixLanguages(lastCheck),
              (SixTexts{"Checking in a moment.", "まもなくチェックします。", "곧 검사합니다.", "即将检查。",
                        "即將檢查。", "Magche-check sandali."}));
    situation.checkInFlight = true;
    EXPECT_EQ(inSixLanguages(lastCheck),
              (SixTexts{"Checking now", "チェック中", "검사 중", "正在检查", "正在檢查", "Nagche-check ngayon"}));
}

TEST_F(MenuContentTest, TheTargetsAreIntroducedAndExplainedInSixLanguages)
{
    EXPECT_EQ(inSixLanguages([this] { return content().targets.heading; }),
              (SixTexts{"Protection applies to", "Protectionの対象", "Protection 대상", "Protection 适用于",
                        "Protection 適用於", "Sakop ng Protection"}));
    EXPECT_EQ(inSixLanguages([this] { return content().targets.note; }),
              (SixTexts{"Ollama, MLX, LM Studio headless, llama.cpp. Never code editors, browsers, or Mail.",
                        "Ollama、MLX、LM Studio headless、llama.cpp。コードエディタ、ブラウザ、Mailは対象外。",
                        "Ollama, MLX, LM Studio headless, llama.cpp. 코드 편집기·브라우저·Mail은 제외.",
                        "Ollama、MLX、LM Studio headless、llama.cpp。不会作用于代码编辑器、浏览器或邮件。",
                        "Ollama、MLX、LM Studio headless、llama.cpp。不會作用於程式編輯器、瀏覽器或郵件。",
                        "Ollama, MLX, LM Studio headless, llama.cpp. Hindi code editors, browsers, o Mail."}));
}

TEST_F(MenuContentTest, TheSetAsideSectionIsSpokenInSixLanguages)
{
    status.quarantine.assign(12, setAsideProcess("1"));
    EXPECT_EQ(inSixLanguages([this] { return content().setAside->heading; }),
              (SixTexts{"SET ASIDE (12)", "除外 (12)", "제외 (12)", "暂存 (12)", "暫存 (12)", "ITABI (12)"}));
    EXPECT_EQ(inSixLanguages([this] { return content().setAside->clearAll; }),
              (SixTexts{"Clear all (12)", "すべて解除 (12)", "모두 해제 (12)", "全部清除 (12)", "全部清除 (12)",
                        "I-clear lahat (12)"}));
    EXPECT_EQ(inSixLanguages([this] { return content().setAside->footnote; }),
              (SixTexts{"Only Ollama, MLX, LM Studio.", "Ollama、MLX、LM Studioのみ。", "Ollama, MLX, LM Studio만.",
                        "仅 Ollama、MLX、LM Studio。", "僅 Ollama、MLX、LM Studio。", "Ollama, MLX, LM Studio lang."}));
    const auto acknowledge = [this] { return content().setAside->acknowledge; };
    EXPECT_EQ(inSixLanguages(acknowledge), (SixTexts{"Acknowledge", "了解", "확인", "确认", "確認", "Acknowledge"}));
    situation.ackBusy = true;
    EXPECT_EQ(inSixLanguages(acknowledge),
              (SixTexts{"Acknowledging…", "了解処理中…", "확인 중…", "正在确认…", "正在確認…", "Tina-acknowledge…"}));
}

TEST_F(MenuContentTest, TheRowsThatRunTheToolAreLabelledInSixLanguages)
{
    status.memoryReliefTip = "Unload something.";
    const auto first = [this] { return content().actions[0][0].label; };
    EXPECT_EQ(inSixLanguages(first), (SixTexts{"Protection On", "Protection オン", "Protection 켜짐", "Protection 开",
                                               "Protection 開", "Protection On"}));
    protectionOff();
    EXPECT_EQ(inSixLanguages(first), (SixTexts{"Protection Off", "Protection オフ", "Protection 꺼짐", "Protection 关",
                                               "Protection 關", "Protection Off"}));
    notSetUp();
    EXPECT_EQ(inSixLanguages(first),
              (SixTexts{"Start background checks", "バックグラウンドチェックを開始", "백그라운드 검사 시작",
                        "启动后台检查", "啟動背景檢查", "Simulan ang background checks"}));
    EXPECT_EQ(inSixLanguages([this] { return content().actions[0][1].label; }),
              (SixTexts{"Unload listed AI", "対象AIをアンロード", "대상 AI 언로드", "卸载所列 AI", "卸載所列 AI",
                        "I-unload ang listed AI"}));
}

TEST_F(MenuContentTest, TheSettingsAreLabelledInSixLanguages)
{
    const auto login = [this] { return content().actions[1][0].label; };
    const auto updates = [this] { return content().actions[1][1].label; };
    EXPECT_EQ(inSixLanguages(login), (SixTexts{"Open at Login: Off", "ログイン時に開く: オフ", "로그인 시 열기: 꺼짐",
                                               "登录时打开：关", "登入時開啟：關", "Buksan sa Login: Off"}));
    EXPECT_EQ(inSixLanguages(updates),
              (SixTexts{"Auto updates: Off", "自動アップデート確認: オフ", "자동 업데이트 확인: 꺼짐",
                        "自动检查更新：关", "自動檢查更新：關", "Auto updates: Off"}));
    situation.openAtLogin = situation.automaticChecksEnabled = true;
    EXPECT_EQ(inSixLanguages(login), (SixTexts{"Open at Login: On", "ログイン時に開く: オン", "로그인 시 열기: 켜짐",
                                               "登录时打开：开", "登入時開啟：開", "Buksan sa Login: On"}));
    EXPECT_EQ(inSixLanguages(updates),
              (SixTexts{"Auto updates: On", "自動アップデート確認: オン", "자동 업데이트 확인: 켜짐",
                        "自动检查更新：开", "自動檢查更新：開", "Auto updates: On"}));
}

TEST_F(MenuContentTest, TheRemainingActionsAndTheFooterAreSpokenInSixLanguages)
{
    const SixTexts expected[] = {
        {"Live data", "ライブデータ", "라이브 데이터", "实时数据", "即時資料", "Live data"},
        {"Check for Updates...", "アップデートを確認…", "업데이트 확인…", "检查更新…", "檢查更新…",
         "Tingnan ang Updates..."},
        {"Report a problem", "問題を報告", "문제 보고", "报告问题", "回報問題", "I-report ang problema"},
        {"Uninstall…", "アンインストール…", "제거…", "卸载…", "解除安裝…", "I-uninstall…"},
        {"Quit Quenchly", "Quenchlyを終了", "Quenchly 종료", "退出 Quenchly", "結束 Quenchly", "Isara ang Quenchly"},
    };
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(inSixLanguages([this, i] { return content().actions[2 + i][0].label; }), expected[i]);
    situation.updaterConfigured = false;
    EXPECT_EQ(
        inSixLanguages([this] { return content().footer.updates; }),
        (SixTexts{"Updates not configured yet", "アップデートはまだ設定されていません", "업데이트가 아직 설정되지 않음",
                  "尚未配置更新", "尚未設定更新", "Hindi pa naka-set ang updates"}));
}

TEST_F(MenuContentTest, EveryHelpIsInTheLanguageInForce)
{
    status.memoryReliefTip = "Unload something.";
    status.quarantine = {setAsideProcess("1"), setAsideProcess("2")};
    const std::vector<std::string_view> keys{"help_protection_on",  "help_unload_listed_ai", "help_open_at_login",
                                             "help_auto_updates",   "help_live_data",        "help_check_for_updates",
                                             "help_report_problem", "help_uninstall",        "help_quit"};
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        const MenuContent shown = content();
        std::vector<std::string> helps;
        for (const std::vector<MenuContent::Row>& group : shown.actions)
            for (const MenuContent::Row& row : group)
                helps.push_back(row.help);
        ASSERT_EQ(helps.size(), keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i)
            EXPECT_EQ(helps[i], L10n::t(keys[i]));
        EXPECT_EQ(shown.header.lockupHelp, L10n::t("help_protection_on"));
        EXPECT_EQ(shown.targets.help, L10n::t("help_protection_applies_to"));
        EXPECT_EQ(shown.setAside->help, L10n::t("help_set_aside"));
        EXPECT_EQ(shown.setAside->acknowledgeHelp, L10n::t("help_acknowledge"));
        EXPECT_EQ(shown.setAside->clearAllHelp, L10n::t("help_clear_all_aside"));
    }
}

TEST_F(MenuContentTest, TheTextsWithoutATranslationStayEnglish)
{
    status.quarantine = {setAsideProcess("1")};
    const auto allSix = [](const char* text) { return SixTexts(allLanguages.size(), text); };
    EXPECT_EQ(inSixLanguages([this] { return content().actions[0][0].trailing; }), allSix("Turn Off"));
    EXPECT_EQ(inSixLanguages([this] { return content().actions[1][0].trailing; }), allSix("Turn On"));
    EXPECT_EQ(inSixLanguages([this] { return content().targets.rows[0].detail; }), allSix("Idle"));
    EXPECT_EQ(inSixLanguages([this] { return content().setAside->entries[0].age; }), allSix("2m 5s ago"));
    EXPECT_EQ(inSixLanguages([this] { return content().targets.honesty; }),
              allSix("No listed AI is open. Other AI is not eased."));
    notSetUp();
    EXPECT_EQ(inSixLanguages([this] { return content().actions[0][0].trailing; }), allSix("Install"));
}

}  // namespace
}  // namespace quenchly
