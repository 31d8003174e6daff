#include "help_copy.h"

#include "help_wording.h"
#include "l10n.h"
#include "this_computer.h"

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

std::string paragraph(std::string_view key)
{
    const std::string text = L10n::t(key);
    return thisComputerIsAMac() ? text : HelpWording::withComputerForMac(text, L10n::language());
}

std::string protectionOn()
{
    return paragraph("help_protection_on");
}

std::string protectionOff()
{
    return paragraph("help_protection_off");
}

std::string checksNotSetUp()
{
    return paragraph("help_checks_not_set_up");
}

std::string startBackgroundChecks()
{
    return paragraph("help_start_background_checks");
}

std::string retainingMemory()
{
    return paragraph("help_retaining_memory");
}

std::string unloadListedAI()
{
    return paragraph("help_unload_listed_ai");
}

std::string extraMemoryStatus()
{
    return paragraph("help_extra_memory_status");
}

std::string extraMemoryTip()
{
    return paragraph("help_extra_memory_tip");
}

std::string loadMeter()
{
    return paragraph("help_load_meter");
}

std::string swapMeter()
{
    return paragraph("help_swap_meter");
}

std::string protectionAppliesTo()
{
    return paragraph("help_protection_applies_to");
}

std::string setAside()
{
    return paragraph("help_set_aside");
}

std::string acknowledge()
{
    return paragraph("help_acknowledge");
}

std::string clearAllAside()
{
    return paragraph("help_clear_all_aside");
}

std::string liveData()
{
    return paragraph("help_live_data");
}

std::string checkForUpdates()
{
    return paragraph("help_check_for_updates");
}

std::string autoUpdates()
{
    return paragraph("help_auto_updates");
}

std::string openAtLogin()
{
    return paragraph("help_open_at_login");
}

std::string reportProblem()
{
    return paragraph("help_report_problem");
}

std::string uninstall()
{
    return paragraph("help_uninstall");
}

std::string quit()
{
    return paragraph("help_quit");
}

}  // namespace MenuHelpCopy
}  // namespace quenchly
