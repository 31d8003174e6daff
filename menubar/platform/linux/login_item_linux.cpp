#include <QStandardPaths>
#include <optional>
#include <system_error>

#include "desktop_entry.h"
#include "file_reading.h"
#include "login_item.h"
#include "settings_files.h"
#include "whole_file.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

std::optional<DesktopEntry> readEntry(const fs::path& path)
{
    const FileReading reading = readFile(path);
    if (reading.outcome == FileReading::Outcome::missing)
        return std::nullopt;
    return DesktopEntry(QByteArray::fromStdString(reading.bytes));  // what cannot be read starts nothing
}

std::string writeEntry(const fs::path& path, const DesktopEntry& entry)
{
    std::error_code ignored;
    fs::create_directories(path.parent_path(), ignored);
    return writeWholeFile(path, entry.text());
}

bool programIsThere(const DesktopEntry& entry)
{
    const QString program = entry.string("TryExec");
    return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

/// An entry in the desktop's autostart folder.
class AutostartEntry final : public LoginItem {
public:
    explicit AutostartEntry(const LoginItemPlaces& places)
        : file_(places.settingsFolder / autostartFile),
          canBeStarted_(places.executable.string().find_first_of("\r\n") == std::string::npos),
          fresh_(DesktopEntry::starting(QString::fromStdString(places.executable.string())))
    {
        for (const fs::path& folder : places.systemSettingsFolders)
            systemFiles_.push_back(folder / autostartFile);
    }

    Status status() const override
    {
        std::optional<DesktopEntry> entry = readEntry(file_);
        if (!entry)
            entry = systemEntry();
        if (!entry)
            return Status::notRegistered;
        if (entry->isSwitchedOff())
            return Status::requiresApproval;
        return programIsThere(*entry) ? Status::enabled : Status::notFound;
    }

    std::string registerItem() override
    {
        if (!canBeStarted_)
            return "The program's path has a line break, and desktops start no such program.";
        if (status() == Status::requiresApproval)
            return "It is switched off in the desktop's settings.";
        return writeEntry(file_, fresh_);
    }

    std::string unregisterItem() override
    {
        const std::optional<DesktopEntry> entry = readEntry(file_);
        if (systemEntry() || (entry && isWorthKeeping(*entry)))
            return writeEntry(file_, entry.value_or(fresh_).switchedOff());
        std::error_code error;
        fs::remove(file_, error);
        return error ? error.message() : std::string();
    }

    void requestApproval() override
    {
        if (status() != Status::requiresApproval)
            return;
        const std::optional<DesktopEntry> entry = readEntry(file_);
        if (entry && isWorthKeeping(*entry))
            writeEntry(file_, entry->switchedOn());
        else if (canBeStarted_)
            writeEntry(file_, fresh_);
    }

private:
    std::optional<DesktopEntry> systemEntry() const
    {
        for (const fs::path& file : systemFiles_)
            if (std::optional<DesktopEntry> entry = readEntry(file))
                return entry;
        return std::nullopt;
    }

    /// Somebody has edited it, and it starts something.
    bool isWorthKeeping(const DesktopEntry& entry) const
    {
        const DesktopEntry switchedOn = entry.switchedOn();
        return switchedOn != fresh_ && !switchedOn.isSwitchedOff() && programIsThere(switchedOn);
    }

    fs::path file_;
    std::vector<fs::path> systemFiles_;
    bool canBeStarted_;  ///< there is an entry that starts the program
    DesktopEntry fresh_;
};

}  // namespace

std::unique_ptr<LoginItem> makeLoginItem(const LoginItemPlaces& places)
{
    return std::make_unique<AutostartEntry>(places);
}

}  // namespace quenchly
