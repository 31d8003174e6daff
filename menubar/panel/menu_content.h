#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "instant.h"
#include "metrics_meters.h"
#include "quench_status.h"
#include "target_scanner.h"
#include "tool_availability.h"

namespace quenchly {

/// What a row of the panel does when it is pressed.
enum class MenuAction {
    installAgent,
    protectOn,
    protectOff,
    unloadListed,
    openAtLoginOn,
    openAtLoginOff,
    automaticChecksOn,
    automaticChecksOff,
    liveData,
    checkForUpdates,
    reportProblem,
    uninstall,
    quit,
};

/// What a text is coloured as: all is in order, or a warning.
enum class MenuTone { gold, clay };

/// Everything that the panel shows, decided without a window: the sections from top to bottom. All texts are plain; an
/// absent text is empty. Those that come from files are harmless single lines of at most 400 characters where nothing
/// else is said.
struct MenuContent {
    struct Header {
        QuenchBarTint tint = QuenchBarTint::waiting;
        std::string headline;
        std::string lockup;
        MenuTone lockupTone = MenuTone::gold;
        std::string lockupHelp;
        std::string lastCheck;
        std::optional<MetricsMeters> meters;
        std::string detail;
        bool detailIsNew = true;  ///< false: the headline and the meters say it all
        std::string statusHelp;   ///< paragraphs, divided by empty lines
        std::string memoryTip;    ///< at most 600 characters

        bool operator==(const Header&) const = default;
    };

    struct Target {
        TargetRow::State state = TargetRow::State::unknown;
        std::string name;
        std::string detail;

        bool operator==(const Target&) const = default;
    };

    struct Targets {
        std::string heading;
        std::string help;
        std::vector<Target> rows;  ///< at most `mostTargets`
        std::size_t moreRows = 0;  ///< how many are left out
        std::string note;
        std::string honesty;

        bool operator==(const Targets&) const = default;
    };

    struct SetAsideEntry {
        Text id;  ///< as the file has it: for the acknowledge command, not for display
        std::string label;
        std::string
            distinction;  ///< where others have the same label: a port, such as ":8080", or what names the entry
        std::string age;
        std::string fullText;  ///< name, command and reason in lines of their own, each at most 600 characters
        bool isListed = true;  ///< false: it is gone and only keeps its place; it cannot be acknowledged

        bool operator==(const SetAsideEntry&) const = default;
    };

    struct SetAside {
        std::string heading;
        std::string help;
        std::vector<SetAsideEntry> entries;  ///< at most `mostSetAside`
        std::string acknowledge;
        std::string acknowledgeHelp;
        std::string clearAll;  ///< absent for a single entry
        std::string clearAllHelp;
        bool showsAll = true;  ///< false while some wait to be shown: nobody is to acknowledge what they do not see
        bool enabled = true;  ///< all buttons of the section
        std::string reason;   ///< why they are grey; absent too while their action runs
        std::string footnote;

        bool operator==(const SetAside&) const = default;
    };

    struct Row {
        MenuAction action = MenuAction::quit;
        std::string label;
        std::string trailing;
        std::string help;
        bool enabled = true;
        std::string reason;  ///< why the row is grey; absent too while its action runs

        bool operator==(const Row&) const = default;
    };

    struct Footer {
        std::string version;
        std::string updates;

        bool operator==(const Footer&) const = default;
    };

    static constexpr std::size_t mostTargets = 8;
    static constexpr std::size_t mostSetAside = 4;

    Header header;
    Targets targets;
    std::optional<SetAside> setAside;
    std::vector<std::vector<Row>> actions;  ///< groups, with a divider between each two
    Footer footer;

    bool operator==(const MenuContent&) const = default;
};

/// What the panel's content is decided from. It only refers to the status and the rows: a temporary does not compile.
struct MenuSituation {
    std::reference_wrapper<const QuenchStatus> status;
    std::reference_wrapper<const std::vector<TargetRow>> targetRows;
    ToolAvailability toolAvailability = ToolAvailability::toolNotFound;
    bool protectBusy = false;
    bool ackBusy = false;
    bool checkInFlight = false;
    bool openAtLogin = false;
    bool updaterConfigured = false;
    bool automaticChecksEnabled = false;
    std::string version;
    Instant now;
};
MenuContent menuContent(const MenuSituation& situation);

}  // namespace quenchly
