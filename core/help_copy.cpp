#include "help_copy.h"

#include "l10n.h"

namespace quenchly {
namespace MemoryReliefCopy {

bool isSwapCritical(std::optional<double> pct)
{
    return pct && *pct > swapCriticalPct;
}

std::string tip()
{
    return MenuHelpCopy::extraMemoryTip();
}

std::string checksNotSetUpDetail()
{
    return MenuHelpCopy::checksNotSetUp();
}

std::optional<std::string> liveTip(const LiveTip& arguments)
{
    if (arguments.swapCritical && arguments.listedAiRunning)
        return tip();
    return std::nullopt;
}

}  // namespace MemoryReliefCopy

namespace MenuHelpCopy {

std::string protectionOn()
{
    return L10n::t("help_protection_on");
}

std::string protectionOff()
{
    return L10n::t("help_protection_off");
}

std::string checksNotSetUp()
{
    return L10n::t("help_checks_not_set_up");
}

std::string startBackgroundChecks()
{
    return L10n::t("help_start_background_checks");
}

std::string retainingMemory()
{
    return L10n::t("help_retaining_memory");
}

std::string unloadListedAI()
{
    return L10n::t("help_unload_listed_ai");
}

std::string extraMemoryStatus()
{
    return L10n::t("help_extra_memory_status");
}

std::string extraMemoryTip()
{
    return L10n::t("help_extra_memory_tip");
}

std::string loadMeter()
{
    return L10n::t("help_load_meter");
}

std::string swapMeter()
{
    return L10n::t("help_swap_meter");
}

std::string protectionAppliesTo()
{
    return L10n::t("help_protection_applies_to");
}

std::string setAside()
{
    return L10n::t("help_set_aside");
}

std::string acknowledge()
{
    return L10n::t("help_acknowledge");
}

std::string clearAllAside()
{
    return L10n::t("help_clear_all_aside");
}

std::string liveData()
{
    return L10n::t("help_live_data");
}

std::string checkForUpdates()
{
    return L10n::t("help_check_for_updates");
}

std::string autoUpdates()
{
    return L10n::t("help_auto_updates");
}

std::string openAtLogin()
{
    return L10n::t("help_open_at_login");
}

std::string reportProblem()
{
    return L10n::t("help_report_problem");
}

std::string uninstall()
{
    return L10n::t("help_uninstall");
}

std::string quit()
{
    return L10n::t("help_quit");
}

}  // namespace MenuHelpCopy
}  // namespace quenchly
