#include <unistd.h>

#include <system_error>

#include "child_process.h"
#include "command_runner.h"
#include "foreground.h"
#include "observe_only.h"
#include "state_watcher.h"
#include "text.h"

namespace quenchly {
namespace {

constexpr std::size_t first = 0;
constexpr std::size_t second = 1;

Alert confirmation()
{
    return {.title = "Uninstall Quenchly?",
            .text = "This turns off Open at Login and removes the background check (" +
                    std::string(CheckerContract::agentLabel) +
                    "). Your saved data stays on this Mac; you can remove it in the next step.",
            .buttons = {"Uninstall", "Cancel"}};
}

Alert savedDataAlert(const std::filesystem::path& dataHome)
{
    return {.title = "Remove saved data too?",
            .text =
                "This step is optional. It archives your Quenchly data folder (its saved state) and then removes "
                "the live copy. Skip it to keep the data for a later install.\n\n" +
                displayLine(dataHome.string()),
            .buttons = {"Keep saved data", "Remove saved data"}};
}

Alert trashAlert()
{
    return {.title = "Move Quenchly to the Trash?",
            .text = "Removes the menu-bar app from this Mac. You can reinstall from the Quenchly download later.",
            .buttons = {"Move to Trash", "Keep app"}};
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
    if (const auto runner = CLIRunner::find(dataHome_, system_))
        runner->runWaiting(ToolCommand::removeAgent);
    else
        removeAgent(system_);
}

void StateWatcher::removeSavedData() const
{
    if (const auto runner = CLIRunner::find(dataHome_, system_))
        runner->runWaiting(ToolCommand::uninstall);
}

void StateWatcher::sayGoodbye() const
{
    showAlert({.title = "Quenchly uninstalled",
               .text = "Open at Login is off and the background check is removed. The app is still here; Quit when you "
                       "are done, or Move to Trash from Finder."});
    system_.application->terminate();
}

void StateWatcher::showAlert(const Notice& notice) const
{
    comeToForeground(system_);
    system_.runAlert({.title = notice.title, .text = notice.text, .buttons = {"OK"}});
    returnToMenuBar(system_);
}

}  // namespace quenchly
