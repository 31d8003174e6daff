#include "menu_content.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "help_copy.h"
#include "l10n.h"
#include "protect_lockup.h"
#include "quarantine_display.h"
#include "recency_copy.h"
#include "relative_time.h"
#include "text.h"
#include "verdict_story.h"

namespace quenchly {
namespace {

constexpr std::size_t longestFullText = 600;  // characters; a popover or tooltip of it fits on a low screen

/// Why the actions that need the checker's tool are grey; empty when the tool can be run.
std::string reasonForGrey(const MenuSituation& situation)
{
    switch (situation.toolAvailability) {
        case ToolAvailability::available:
            return "";
        case ToolAvailability::toolNotFound:
            return L10n::t("needs_tool");
        case ToolAvailability::interpreterNotFound:
            return L10n::t("needs_interpreter");
    }
    return "";
}

bool protectionIsOn(const QuenchStatus& status)
{
    return !status.managementDisabled;
}

bool toolCanRun(const MenuSituation& situation)
{
    return situation.toolAvailability == ToolAvailability::available;
}

std::string lockupHelp(const QuenchStatus& status)
{
    if (!status.agentInstalled)
        return MenuHelpCopy::checksNotSetUp();
    if (!protectionIsOn(status))
        return MenuHelpCopy::protectionOff();
    return MenuHelpCopy::protectionOn();
}

std::string lastCheckLine(const MenuSituation& situation)
{
    const QuenchStatus& status = situation.status;
    return RecencyCopy::dropdownLine({.age = status.lastCheckAge,
                                      .ageSeconds = RecencyCopy::ageSeconds(status.lastCheckISO, situation.now),
                                      .iconStale = status.icon == QuenchIcon::stale,
                                      .inFlight = situation.checkInFlight})
        .value_or("");
}

std::string statusHelpText(const QuenchStatus& status)
{
    std::string text;
    const auto add = [&text](const std::string& paragraph) { text += (text.empty() ? "" : "\n\n") + paragraph; };
    if (status.swapCritical)
        add(MenuHelpCopy::extraMemoryStatus());
    if (ProtectLockup::retainingMemoryFact(
            {.protectOn = protectionIsOn(status), .agentInstalled = status.agentInstalled}))
        add(MenuHelpCopy::retainingMemory());
    if (!status.agentInstalled)
        add(MenuHelpCopy::checksNotSetUp());
    return text;
}

/// Empty when there is no tip.
std::string memoryReliefTip(const MenuSituation& situation)
{
    const QuenchStatus& status = situation.status;
    std::string ownTip = displayLine(status.memoryReliefTip.value_or("").utf8(), longestFullText);
    if (!ownTip.empty())
        return ownTip;
    const bool swapHigh = status.swapCritical || (status.lastMetrics && status.lastMetrics->swapCritical);
    return MemoryReliefCopy::liveTip(
               {.swapCritical = swapHigh, .listedAiRunning = TargetScanner::anyListedLive(situation.targetRows)})
        .value_or("");
}

/// Whether the detail says more than the headline does and the meters show.
bool detailIsNew(const QuenchStatus& status)
{
    std::string_view sentence = status.detail.utf8();
    const std::string figures = status.lastMetrics ? status.lastMetrics->menubarLine.utf8() + ". " : "";
    if (sentence.starts_with(figures))
        sentence.remove_prefix(figures.size());
    return sentence != status.headline.utf8();
}

MenuContent::Header header(const MenuSituation& situation)
{
    const QuenchStatus& status = situation.status;
    const bool protects = status.agentInstalled && protectionIsOn(status);
    MenuContent::Header header;
    header.tint = status.barTint;
    header.headline = displayLine(status.headline.utf8());
    header.lockup =
        ProtectLockup::panel({.protectOn = protectionIsOn(status), .agentInstalled = status.agentInstalled});
    header.lockupTone = protects ? MenuTone::gold : MenuTone::clay;
    header.lockupHelp = lockupHelp(status);
    header.lastCheck = lastCheckLine(situation);
    if (status.lastMetrics)
        header.meters = MetricsMeters::of(*status.lastMetrics);
    header.detail = displayLine(status.detail.utf8());
    header.detailIsNew = detailIsNew(status);
    header.statusHelp = statusHelpText(status);
    header.memoryTip = memoryReliefTip(situation);
    return header;
}

MenuContent::Targets targets(const MenuSituation& situation)
{
    const QuenchStatus& status = situation.status;
    MenuContent::Targets targets;
    targets.heading = L10n::t("protection_applies_to");
    targets.help = MenuHelpCopy::protectionAppliesTo();
    const std::vector<TargetRow>& rows = situation.targetRows;
    const std::size_t shown = std::min(rows.size(), MenuContent::mostTargets);
    for (std::size_t i = 0; i < shown; ++i) {
        const TargetRow& row = rows[i];
        targets.rows.push_back({row.state, displayLine(row.name.utf8()), std::string(row.detail)});
    }
    targets.moreRows = rows.size() - shown;
    targets.note = L10n::t("protection_targets");
    targets.honesty =
        VerdictStoryLogic::protectionAppliesHonesty({.protectOn = status.agentInstalled && protectionIsOn(status),
                                                     .overload = status.stillOverloaded,
                                                     .anyListedLive = TargetScanner::anyListedLive(rows)})
            .value_or("");
    return targets;
}

MenuContent::SetAsideEntry setAsideEntry(const QuarantinedEntry& entry, Instant now)
{
    std::string name = displayLine(QuarantineDisplay::rowLabel(entry), longestFullText);
    if (name.empty())
        name = displayLine(entry.id.utf8(), longestFullText);
    std::string fullText = name;
    for (const Text* more : {&entry.cmd, &entry.reason}) {
        const std::string line = displayLine(more->utf8(), longestFullText);
        if (!line.empty() && line != name)
            fullText += (fullText.empty() ? "" : "\n") + line;
    }
    return {.id = entry.id,
            .label = displayLine(name),
            .age = RelativeTime::ageAgo(entry.quarantinedAt, now),
            .fullText = std::move(fullText)};
}

/// The port that a command is told to listen at, as ":8080"; empty where there is none.
std::string portOf(const QuarantinedEntry& entry)
{
    constexpr std::string_view option = "--port";
    constexpr std::string_view digits = "0123456789";
    const std::string command = " " + entry.cmd.utf8();
    std::size_t at = command.find(" " + std::string(option) + " ");
    if (at == std::string::npos)
        at = command.find(" " + std::string(option) + "=");
    if (at == std::string::npos)
        return {};
    const std::string value = command.substr(at + option.size() + 2);
    const std::string port = value.substr(0, value.find_first_not_of(digits));
    return port.empty() || port.size() > 5 ? "" : ":" + port;
}

/// Gives entries that would read the same what tells them apart.
void distinguish(std::vector<MenuContent::SetAsideEntry>& entries, const std::vector<std::string>& ports)
{
    const auto likeIt = [&](std::size_t i, bool alsoPort) {
        std::size_t count = 0;
        for (std::size_t other = 0; other < entries.size(); ++other)
            count += entries[other].label == entries[i].label && (!alsoPort || ports[other] == ports[i]) ? 1 : 0;
        return count;
    };
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (likeIt(i, false) > 1)
            entries[i].distinction =
                ports[i].empty() || likeIt(i, true) > 1 ? displayLine(entries[i].id.utf8()) : ports[i];
}

std::optional<MenuContent::SetAside> setAside(const MenuSituation& situation)
{
    std::vector<MenuContent::SetAsideEntry> entries;
    std::vector<std::string> ports;
    std::int64_t count = 0;
    for (const QuarantinedEntry& entry : situation.status.get().quarantine) {
        if (entry.acknowledged)
            continue;
        if (entries.size() < MenuContent::mostSetAside) {
            entries.push_back(setAsideEntry(entry, situation.now));
            ports.push_back(portOf(entry));
        }
        ++count;
    }
    if (count == 0)
        return std::nullopt;
    distinguish(entries, ports);
    MenuContent::SetAside setAside;
    setAside.heading = L10n::tf("set_aside_heading", {count});
    setAside.help = MenuHelpCopy::setAside();
    setAside.entries = std::move(entries);
    setAside.acknowledge = L10n::t(situation.ackBusy ? "acknowledging" : "acknowledge");
    setAside.acknowledgeHelp = MenuHelpCopy::acknowledge();
    if (count >= 2)
        setAside.clearAll = L10n::tf("clear_all_n", {count});
    setAside.clearAllHelp = MenuHelpCopy::clearAllAside();
    setAside.enabled = toolCanRun(situation) && !situation.ackBusy;
    setAside.reason = reasonForGrey(situation);
    setAside.footnote = L10n::t("only_listed_ai");
    return setAside;
}

/// What a row that switches something says and does in each of its two positions.
struct Switch {
    bool on;
    std::string_view keyOn;
    std::string_view keyOff;
    MenuAction turnOn;
    MenuAction turnOff;
};

MenuContent::Row switchRow(const Switch& row, std::string help)
{
    return {.action = row.on ? row.turnOff : row.turnOn,
            .label = L10n::t(row.on ? row.keyOn : row.keyOff),
            .trailing = L10n::t(row.on ? "turn_off" : "turn_on"),
            .help = std::move(help)};
}

MenuContent::Row protectionRow(const QuenchStatus& status)
{
    if (!status.agentInstalled)
        return {.action = MenuAction::installAgent,
                .label = L10n::t("start_background_checks"),
                .trailing = L10n::t("install"),
                .help = MenuHelpCopy::startBackgroundChecks()};
    const bool on = protectionIsOn(status);
    return switchRow({.on = on,
                      .keyOn = ProtectLockup::protectionOn,
                      .keyOff = ProtectLockup::protectionOff,
                      .turnOn = MenuAction::protectOn,
                      .turnOff = MenuAction::protectOff},
                     on ? MenuHelpCopy::protectionOn() : MenuHelpCopy::protectionOff());
}

std::vector<MenuContent::Row> toolRows(const MenuSituation& situation)
{
    std::vector<MenuContent::Row> rows{protectionRow(situation.status)};
    if (!memoryReliefTip(situation).empty())
        rows.push_back({.action = MenuAction::unloadListed,
                        .label = L10n::t("unload_listed_ai"),
                        .help = MenuHelpCopy::unloadListedAI()});
    for (MenuContent::Row& row : rows) {
        row.enabled = toolCanRun(situation) && !situation.protectBusy;
        row.reason = reasonForGrey(situation);
    }
    return rows;
}

std::vector<MenuContent::Row> settingRows(const MenuSituation& situation)
{
    std::vector<MenuContent::Row> rows{switchRow({.on = situation.openAtLogin,
                                                  .keyOn = "open_at_login_on",
                                                  .keyOff = "open_at_login_off",
                                                  .turnOn = MenuAction::openAtLoginOn,
                                                  .turnOff = MenuAction::openAtLoginOff},
                                                 MenuHelpCopy::openAtLogin())};
    if (!situation.updaterConfigured)
        return rows;
    rows.push_back(switchRow({.on = situation.automaticChecksEnabled,
                              .keyOn = "auto_updates_on",
                              .keyOff = "auto_updates_off",
                              .turnOn = MenuAction::automaticChecksOn,
                              .turnOff = MenuAction::automaticChecksOff},
                             MenuHelpCopy::autoUpdates()));
    rows.back().trailing.clear();
    return rows;
}

std::vector<std::vector<MenuContent::Row>> actions(const MenuSituation& situation)
{
    return {
        toolRows(situation),
        settingRows(situation),
        {{.action = MenuAction::liveData, .label = L10n::t("live_data"), .help = MenuHelpCopy::liveData()}},
        {{.action = MenuAction::checkForUpdates,
          .label = L10n::t("check_for_updates"),
          .help = MenuHelpCopy::checkForUpdates()}},
        {{.action = MenuAction::reportProblem,
          .label = L10n::t("report_problem"),
          .help = MenuHelpCopy::reportProblem()}},
        {{.action = MenuAction::uninstall, .label = L10n::t("uninstall"), .help = MenuHelpCopy::uninstall()}},
        {{.action = MenuAction::quit, .label = L10n::t("quit"), .help = MenuHelpCopy::quit()}},
    };
}

}  // namespace

MenuContent menuContent(const MenuSituation& situation)
{
    return {.header = header(situation),
            .targets = targets(situation),
            .setAside = setAside(situation),
            .actions = actions(situation),
            .footer = {.version = situation.version,
                       .updates = situation.updaterConfigured ? "" : L10n::t("updates_not_configured")}};
}

}  // namespace quenchly
