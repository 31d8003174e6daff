#include "menu_bar_content.h"

#include <gtest/gtest.h>

#include "l10n.h"
#include "menu_bar_icon.h"
#include "scripted_system.h"

namespace quenchly {
namespace {

constexpr const char* freshState =
    R"({"lastCheck":"2026-03-01T11:59:30Z","lastMetrics":{"load1":1.6,"cpuCount":8,"swapPct":31,"swapUsedMB":2150}})";
constexpr const char* overdueState =
    R"({"lastCheck":"2026-03-01T11:58:29Z","lastMetrics":{"load1":1.6,"cpuCount":8,"swapPct":31,"swapUsedMB":2150}})";

class MenuBarContentTest : public ::testing::Test {
protected:
    ~MenuBarContentTest() override { L10n::testingLanguage.reset(); }

    std::string labelIn(AppLanguage language)
    {
        L10n::testingLanguage = language;
        const StateWatcher watcher(world.system());
        return menuBarContent(watcher).label.toStdString();
    }

    testing::ScriptedSystem world;
};

TEST_F(MenuBarContentTest, TheLabelIsSpokenInSixLanguages)
{
    using enum AppLanguage;
    world.writeState("heat-state.json", freshState);
    EXPECT_EQ(labelIn(en), "On  20% · 2.1G");
    EXPECT_EQ(labelIn(ja), "オン  20% · 2.1G");
    EXPECT_EQ(labelIn(ko), "켜짐  20% · 2.1G");
    EXPECT_EQ(labelIn(zhHans), "开  20% · 2.1G");
    EXPECT_EQ(labelIn(zhHant), "開  20% · 2.1G");
    EXPECT_EQ(labelIn(tl), "On  20% · 2.1G");
}

TEST_F(MenuBarContentTest, AnOverdueCheckIsNamedInSixLanguages)
{
    using enum AppLanguage;
    world.writeState("heat-state.json", overdueState);
    EXPECT_EQ(labelIn(en), "On  20% · 2.1G  Checking in a moment.");
    EXPECT_EQ(labelIn(ja), "オン  20% · 2.1G  まもなくチェックします。");
    EXPECT_EQ(labelIn(ko), "켜짐  20% · 2.1G  곧 검사합니다.");
    EXPECT_EQ(labelIn(zhHans), "开  20% · 2.1G  即将检查。");
    EXPECT_EQ(labelIn(zhHant), "開  20% · 2.1G  即將檢查。");
    EXPECT_EQ(labelIn(tl), "On  20% · 2.1G  Magche-check sandali.");
}

TEST_F(MenuBarContentTest, ARunningCheckIsNamedInSixLanguages)
{
    using enum AppLanguage;
    world.writeState("heat-state.json", overdueState);
    world.processes->matchedPatterns = {"quenchly.ts check"};
    EXPECT_EQ(labelIn(en), "On  20% · 2.1G  Checking now");
    EXPECT_EQ(labelIn(ja), "オン  20% · 2.1G  チェック中");
    EXPECT_EQ(labelIn(ko), "켜짐  20% · 2.1G  검사 중");
    EXPECT_EQ(labelIn(zhHans), "开  20% · 2.1G  正在检查");
    EXPECT_EQ(labelIn(zhHant), "開  20% · 2.1G  正在檢查");
    EXPECT_EQ(labelIn(tl), "On  20% · 2.1G  Nagche-check ngayon");
}

TEST_F(MenuBarContentTest, ProtectionOffAndMissingChecksAreNamedInSixLanguages)
{
    using enum AppLanguage;
    const std::map<AppLanguage, std::pair<std::string, std::string>> words{
        {en, {"Protection Off", "Checks not set up"}}, {ja, {"Protection オフ", "チェック未設定"}},
        {ko, {"Protection 꺼짐", "검사 미설정"}},      {zhHans, {"Protection 关", "检查未设置"}},
        {zhHant, {"Protection 關", "檢查未設定"}},     {tl, {"Protection Off", "Hindi pa naka-set ang checks"}},
    };
    world.writeState("heat-state.json", freshState);
    world.writeState("managed.json", R"({"disabledAt":"2026-03-01T11:00:00Z"})");
    for (const auto& [language, word] : words)
        EXPECT_EQ(labelIn(language), word.first + "  20% · 2.1G");
    std::filesystem::remove(world.agentFile());
    for (const auto& [language, word] : words)
        EXPECT_EQ(labelIn(language), word.second + "  20% · 2.1G") << "missing checks come before Protection";
}

TEST_F(MenuBarContentTest, TheImagesAreThoseOfTheTintAndTheExplanationIsTheHeadline)
{
    world.writeState("heat-state.json", R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})");
    const StateWatcher watcher(world.system());
    const MenuBarExtraContent content = menuBarContent(watcher);
    EXPECT_EQ(content.images, MenuBarIcon::image(QuenchBarTint::hotWatch));
    EXPECT_EQ(content.explanation, QStringLiteral("Overload. Watching."));
}

TEST_F(MenuBarContentTest, HostileTextsBecomeOneShortPlainLine)
{
    const std::string megabyte(1'000'000, 'x');
    world.writeState("heat-state.json",
                     R"({"lastCheck":"2026-03-01T11:59:30Z","story":{"text":"a\u001b[31m\nb\u202ec)" + megabyte +
                         R"("},"lastMetrics":{"load1":1,"menubarLine":"load 1\n2\u202e)" + megabyte + R"("}})");
    const StateWatcher watcher(world.system());
    const MenuBarExtraContent content = menuBarContent(watcher);
    EXPECT_LE(content.label.size(), 60);
    EXPECT_LE(content.explanation.size(), 400);
    EXPECT_TRUE(content.explanation.startsWith(QStringLiteral("a [31m bcxxx"))) << content.explanation.toStdString();
    for (const QString& text : {content.label, content.explanation})
        for (const QChar c : text)
            EXPECT_TRUE(c.isPrint()) << static_cast<int>(c.unicode());
}

}  // namespace
}  // namespace quenchly
