#include <unistd.h>

#include <system_error>

#include "child_process.h"
#include "command_runner.h"
#include "folder_removal.h"
#include "foreground.h"
#include "l10n.h"
#include "observe_only.h"
#include "path_below.h"
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

constexpr const char* dataKeptTitle = "Saved data was not removed";
constexpr const char* dataLiesElsewhere =
    "The data folder lies outside of the home folder that was given. It was left as it is.";

const char* whyDataWasKept(RemovalRefusal refusal)
{
    switch (refusal) {
        case RemovalRefusal::root:
            return "The data folder is the root of the file system. It was left as it is.";
        case RemovalRefusal::homeFolder:
            return "The data folder is a home folder or holds one. It was left as it is.";
        case RemovalRefusal::notAFolder:
            return "What is in the data folder's place is no folder. It was left as it is.";
        case RemovalRefusal::mountPoint:
            return "A disk is mounted at the data folder. It was left as it is.";
        case RemovalRefusal::otherOwner:
            break;
    }
    return "The data folder belongs to another user. It was left as it is.";
}

/// Why the saved data is not to be removed; null when nothing speaks against it.
const char* reasonToKeepData(const System& system, const std::filesystem::path& dataHome)
{
    if (system.keepsToHomeFolder && !leadsBelow(system.homeFolder, dataHome))
        return dataLiesElsewhere;
    const auto refusal = refusalToRemove(dataHome, system.homeFolder);
    return refusal ? whyDataWasKept(*refusal) : nullptr;
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
    if (system_.keepsToHomeFolder && !leadsBelow(system_.homeFolder, system_.launchAgentsFolder)) {
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
    const char* const reason = reasonToKeepData(system_, dataHome_);
    if (reason == nullptr) {
        runner->runWaiting(ToolCommand::uninstall);
        return;
    }
    system_.log("Quenchly uninstall kept the saved data: " + (reason + (" " + dataHome_.string())));
    showAlert({.title = dataKeptTitle, .text = reason + ("\n\n" + displayLine(dataHome_.string()))});
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
