#include <unistd.h>

#include <system_error>

#include "child_process.h"
#include "command_runner.h"
#include "confined_home.h"
#include "folder_removal.h"
#include "foreground.h"
#include "l10n.h"
#include "observe_only.h"
#include "state_watcher.h"
#include "text.h"

namespace quenchly {
namespace {

constexpr std::size_t first = 0;
constexpr std::size_t second = 1;

Alert confirmation()
{
    return {.title = L10n::t("uninstall_question"),
            .text = L10n::tf("uninstall_question_text", {std::string(CheckerContract::agentLabel)}),
            .buttons = {L10n::t("uninstall_button"), L10n::t("cancel")}};
}

Alert savedDataAlert(const std::filesystem::path& dataHome)
{
    return {.title = L10n::t("remove_data_question"),
            .text = L10n::t("remove_data_question_text") + "\n\n" + displayLine(dataHome.string()),
            .buttons = {L10n::t("keep_saved_data"), L10n::t("remove_saved_data")}};
}

Alert trashAlert()
{
    return {.title = L10n::t("trash_question"),
            .text = L10n::t("trash_question_text"),
            .buttons = {L10n::t("move_to_trash"), L10n::t("keep_app")}};
}

std::string whyDataIsKept(RemovalRefusal refusal)
{
    switch (refusal) {
        case RemovalRefusal::root:
            return L10n::t("data_kept_root");
        case RemovalRefusal::homeFolder:
            return L10n::t("data_kept_home");
        case RemovalRefusal::notAFolder:
            return L10n::t("data_kept_no_folder");
        case RemovalRefusal::mountPoint:
            return L10n::t("data_kept_disk");
        case RemovalRefusal::otherOwner:
            break;
    }
    return L10n::t("data_kept_other_owner");
}

/// Why the saved data is not to be removed; empty when nothing speaks against it.
std::string reasonToKeepData(const System& system, const std::filesystem::path& dataHome)
{
    // The tool that removes the data removes the background check too.
    if (leadsOutOfHome(system, dataHome) || leadsOutOfHome(system, system.launchAgentsFolder))
        return L10n::t("data_kept_outside");
    auto refusal = refusalToRemove(dataHome, system.homeFolder);
    if (const auto home = system.environment.find("HOME");
        !refusal && home != system.environment.end() && !home->second.empty())
        refusal = refusalToRemove(dataHome, home->second);
    return refusal ? whyDataIsKept(*refusal) : "";
}

std::optional<std::size_t> ask(const System& system, const Alert& alert)
{
    comeToForeground(system);
    return system.runAlert(alert);
}

/// What the tool would do, for when there is none.
void removeAgent(const System& system)
{
    if (!system.launchctl.empty())
        runToEnd({.executable = system.launchctl,
                  .arguments = {"bootout",
                                "gui/" + std::to_string(getuid()) + "/" + std::string(CheckerContract::agentLabel)},
                  .environment = system.environment});
    std::error_code ignored;
    std::filesystem::remove(system.launchAgentsFolder / ObserveOnly::agentPlistName, ignored);
}

void trashApplication(const System& system)
{
    system.moveToTrash(system.applicationItem,
                       [log = system.log, application = system.application](const std::string& error) {
                           if (!error.empty())
                               log("Quenchly uninstall Trash failed: " + error);
                           application->terminate();
                       });
}

}  // namespace

void StateWatcher::uninstallQuenchly()
{
    if (!timer_.isActive())
        return;  // it is at it already: a screen reader reaches the menu behind an alert
    timer_.stop();
    if (ask(system_, confirmation()) != first) {
        returnToMenuBar(system_);
        timer_.start();
        return;
    }
    setOpenAtLogin(false);
    removeBackgroundCheck();
    if (ask(system_, savedDataAlert(dataHome_)) == second)
        removeSavedData();
    if (ask(system_, trashAlert()) == first)
        trashApplication(system_);
    else
        sayGoodbye();
}

void StateWatcher::removeBackgroundCheck() const
{
    if (leadsOutOfHome(system_, system_.launchAgentsFolder)) {
        system_.log("Quenchly uninstall kept the background check: its folder lies outside of the home folder.");
        return;
    }
    if (const auto runner = CLIRunner::find(dataHome_, system_))
        runner->runWaiting(ToolCommand::removeAgent);
    else
        removeAgent(system_);
}

void StateWatcher::removeSavedData() const
{
    const auto runner = CLIRunner::find(dataHome_, system_);
    if (!runner)
        return;
    const std::string reason = reasonToKeepData(system_, dataHome_);
    if (reason.empty()) {
        runner->runWaiting(ToolCommand::uninstall);
        return;
    }
    system_.log("Quenchly uninstall kept the saved data: " + reason + " " + dataHome_.string());
    showAlert({.title = L10n::t("data_kept"), .text = reason + "\n\n" + displayLine(dataHome_.string())});
}

void StateWatcher::sayGoodbye() const
{
    showAlert({.title = L10n::t("uninstalled"), .text = L10n::t("uninstalled_text")});
    system_.application->terminate();
}

void StateWatcher::showAlert(const Notice& notice) const
{
    comeToForeground(system_);
    system_.runAlert({.title = notice.title, .text = notice.text, .buttons = {L10n::t("ok")}});
    returnToMenuBar(system_);
}

}  // namespace quenchly
