#include "help_copy.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "shown_language.h"
#include "this_computer.h"

namespace quenchly {
namespace {

using HelpTexts = testing::InEnglish;

struct Row {
    const char* key;
    std::string (*help)();
    const char* english;
};

const Row paragraphs[] = {
    {"help_protection_on", MenuHelpCopy::protectionOn,
     "When your Mac is under heavy load, Protection holds listed local AI (Ollama, MLX, LM Studio headless, "
     "llama-server) in place so the machine is not fighting the AI for CPU. "
     "The model stays loaded; memory stays; work continues in place. "
     "Retaining memory stays On with Protection. "
     "It does not quit apps or free all RAM."},
    {"help_protection_off", MenuHelpCopy::protectionOff,
     "Listed AI runs at full speed even when the Mac is overloaded. "
     "Use this only when you need maximum inference throughput and accept the risk of a heavy UI or swap growth. "
     "Quenchly still shows load and swap meters but will not pace listed AI for Mac usability."},
    {"help_checks_not_set_up", MenuHelpCopy::checksNotSetUp,
     "The menu bar icon is running, but the background checker that reads load and swap is not installed yet. "
     "You see meters from the last snapshot, not live Protect decisions. "
     "Tap Start background checks to finish setup."},
    {"help_start_background_checks", MenuHelpCopy::startBackgroundChecks,
     "Installs the small background checker that reads load and swap every minute and writes status the menu can show. "
     "Without it you only see meters, not live Protect decisions. "
     "One-time setup."},
    {"help_retaining_memory", MenuHelpCopy::retainingMemory,
     "Under Protection On, loaded models stay in memory so chat context and weights stay ready. "
     "Listed AI is held in place so the machine is not fighting the AI for CPU. "
     "This is always on when Protection is On, not a separate toggle."},
    {"help_unload_listed_ai", MenuHelpCopy::unloadListedAI,
     "Unloads loaded local AI models Quenchly manages (Ollama, MLX, and similar) and frees the RAM they were using. "
     "Use when swap is high or macOS warns about memory. "
     "Your next chat will reload the model."},
    {"help_extra_memory_status", MenuHelpCopy::extraMemoryStatus,
     "macOS is using disk space as extra memory (swap) to hold work in progress. "
     "This is not the same as the RAM percent in Activity Monitor; both can be high at once. "
     "Work is still progressing; Quenchly may suggest unloading listed AI if swap stays critical."},
    {"help_extra_memory_tip", MenuHelpCopy::extraMemoryTip,
     "Extra memory on disk is high while listed AI still has models loaded. "
     "Consider Unload listed AI to free RAM before swap grows further. "
     "This does not quit apps or change Protection settings."},
    {"help_load_meter", MenuHelpCopy::loadMeter,
     "Machine load as a percent of your CPU cores, sampled live. "
     "Higher means more threads are waiting for CPU time. "
     "This is not the same as Activity Monitor per-process CPU percent or a temperature reading."},
    {"help_swap_meter", MenuHelpCopy::swapMeter,
     "Extra memory written to disk (swap file used). "
     "High swap means macOS is borrowing disk space to hold RAM contents. "
     "A rising bar here often means the Mac feels heavy; it is separate from the RAM widget showing percent full."},
    {"help_protection_applies_to", MenuHelpCopy::protectionAppliesTo,
     "Under overload, Protection holds listed local AI in place: Ollama, MLX, LM Studio headless, and llama-server or "
     "llama-cpp-server. "
     "Custom llama binaries are included only when the process matches those names."},
    {"help_set_aside", MenuHelpCopy::setAside,
     "Listed AI Quenchly set aside after a looper check. "
     "They run at full speed until you Acknowledge. "
     "Acknowledge lets Protection ease listed AI again on the next check if overload returns."},
    {"help_acknowledge", MenuHelpCopy::acknowledge,
     "Removes one app from SET ASIDE so Protection can ease listed AI again when overload hits. "
     "Use this when you are done giving that app full unchecked speed. "
     "It does not unload models or change Protection On/Off."},
    {"help_clear_all_aside", MenuHelpCopy::clearAllAside,
     "Acknowledges every row in SET ASIDE at once. "
     "Use when you want Protection to apply to all previously set-aside apps on the next check. "
     "Does not change Protection On/Off or uninstall anything."},
    {"help_live_data", MenuHelpCopy::liveData,
     "Opens the live dashboard in your browser on this Mac. "
     "Shows current load, swap, Protection status, and recent check history. "
     "Read-only view; change Protection or unload from the menu, not the dashboard."},
    {"help_check_for_updates", MenuHelpCopy::checkForUpdates,
     "Looks on Quenchly’s update site for a newer build. "
     "If one exists, you choose whether to install. Quenchly never updates silently."},
    {"help_auto_updates", MenuHelpCopy::autoUpdates,
     "When On, Quenchly periodically checks its update site for a newer build. "
     "If one exists, you choose whether to install; nothing installs in the background. "
     "Turn Off to stop those background checks. Check for Updates still works anytime."},
    {"help_open_at_login", MenuHelpCopy::openAtLogin,
     "Adds Quenchly to your login items so the menu bar icon appears after restart. "
     "Does not install background checks or turn Protection on or off. "
     "You still need Start background checks for live Protect decisions."},
    {"help_report_problem", MenuHelpCopy::reportProblem,
     "Opens a pre-filled email to support with diagnostic details from this Mac (version, load, swap, Protection "
     "state). "
     "No data is sent until you hit Send in Mail. "
     "Use when something looks wrong or a check fails repeatedly."},
    {"help_uninstall", MenuHelpCopy::uninstall,
     "Removes the background checker and the Quenchly menu bar app from this Mac. "
     "Does not uninstall Ollama, MLX, or other AI apps."},
    {"help_quit", MenuHelpCopy::quit,
     "Closes the menu bar app only. "
     "If background checks are installed, they keep running and Protection stays as configured. "
     "Reopen Quenchly from Applications or login items."},
};

/// What a paragraph says elsewhere than on a Mac, where it departs from the one above.
const std::tuple<std::string_view, std::string_view, std::string_view> departures[] = {
    {"help_protection_on", "When your Mac is under", "When your computer is under"},
    {"help_protection_off", "even when the Mac is overloaded", "even when the computer is overloaded"},
    {"help_protection_off", "for Mac usability", "for computer usability"},
    {"help_swap_meter", "the Mac feels heavy", "the computer feels heavy"},
    {"help_live_data", "in your browser on this Mac.", "in your browser on this computer."},
    {"help_report_problem", "details from this Mac (", "details from this computer ("},
    {"help_uninstall", "app from this Mac.", "app from this computer."},
};

std::string asShownHere(const Row& row)
{
    std::string text = row.english;
    for (const auto& [key, mac, computer] : departures)
        if (key == row.key && !thisComputerIsAMac())
            text.replace(text.find(mac), mac.size(), computer);
    return text;
}

TEST_F(HelpTexts, EachItemHasItsEnglishParagraph)
{
    for (const Row& row : paragraphs) {
        EXPECT_EQ(L10n::t(row.key), row.english) << row.key;
        EXPECT_EQ(row.help(), asShownHere(row)) << row.key;
    }
}

TEST_F(HelpTexts, EachItemLooksItsOwnKeyUpInTheLanguageInForce)
{
    for (const AppLanguage language : testing::allLanguages) {
        L10n::testingLanguage = language;
        for (const Row& row : paragraphs)
            EXPECT_EQ(row.help(), MenuHelpCopy::paragraph(row.key)) << row.key;
        EXPECT_EQ(MemoryReliefCopy::tip(), L10n::t("help_extra_memory_tip"));
        EXPECT_EQ(MemoryReliefCopy::checksNotSetUpDetail(), L10n::t("help_checks_not_set_up"));
    }
}

TEST(MemoryRelief, SwapIsCriticalStrictlyAboveNinetyPercent)
{
    EXPECT_EQ(MemoryReliefCopy::swapCriticalPct, 90.0);
    EXPECT_FALSE(MemoryReliefCopy::isSwapCritical(std::nullopt));
    EXPECT_FALSE(MemoryReliefCopy::isSwapCritical(0));
    EXPECT_FALSE(MemoryReliefCopy::isSwapCritical(90));
    EXPECT_TRUE(MemoryReliefCopy::isSwapCritical(90.000001));
    EXPECT_TRUE(MemoryReliefCopy::isSwapCritical(250));
}

TEST_F(HelpTexts, TheLiveTipNeedsCriticalSwapAndRunningAi)
{
    using MemoryReliefCopy::liveTip;
    EXPECT_EQ(liveTip({.swapCritical = true, .listedAiRunning = true}), MemoryReliefCopy::tip());
    EXPECT_EQ(liveTip({.swapCritical = true, .listedAiRunning = false}), std::nullopt);
    EXPECT_EQ(liveTip({.swapCritical = false, .listedAiRunning = true}), std::nullopt);
    EXPECT_EQ(liveTip({.swapCritical = false, .listedAiRunning = false}), std::nullopt);
}

}  // namespace
}  // namespace quenchly
