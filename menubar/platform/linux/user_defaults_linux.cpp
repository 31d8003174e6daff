#include "user_defaults.h"

#include <QByteArrayList>
#include <algorithm>
#include <system_error>

#include "file_reading.h"
#include "settings_files.h"
#include "whole_file.h"

namespace quenchly {
namespace {

constexpr const char* header = "[General]";

/// A file as QSettings writes it, which itself leaves an empty one in its place on a full disk.
class SettingsFile final : public UserDefaults {
public:
    explicit SettingsFile(std::filesystem::path file) : file_(std::move(file))
    {
        const FileReading reading = readFile(file_);
        isOurs_ = reading.outcome == FileReading::Outcome::read || reading.outcome == FileReading::Outcome::missing;
        if (!reading.bytes.empty())
            lines_ = QByteArray::fromStdString(reading.bytes).split('\n');
        lines_.removeAll({});
    }

    bool contains(const std::string& key) const override
    {
        const QByteArray start = startOf(key);
        return std::ranges::any_of(lines_, [&](const QByteArray& line) { return line.startsWith(start); });
    }

    void setBool(const std::string& key, bool value) override
    {
        const QByteArray start = startOf(key);
        lines_.removeIf([&](const QByteArray& line) { return line.startsWith(start); });
        if (!lines_.contains(header))
            lines_.prepend(header);
        lines_.insert(lines_.indexOf(header) + 1, start + (value ? "true" : "false"));
        if (!isOurs_)
            return;
        std::error_code ignored;
        std::filesystem::create_directories(file_.parent_path(), ignored);
        writeWholeFile(file_, lines_.join('\n') + '\n');
    }

private:
    static QByteArray startOf(const std::string& key) { return QByteArray::fromStdString(key) + '='; }

    std::filesystem::path file_;
    bool isOurs_ = false;  ///< what cannot be read is not replaced
    QByteArrayList lines_;
};

}  // namespace

std::unique_ptr<UserDefaults> makeUserDefaults(const std::filesystem::path& settingsFolder)
{
    return std::make_unique<SettingsFile>(settingsFolder / defaultsFile);
}

}  // namespace quenchly
