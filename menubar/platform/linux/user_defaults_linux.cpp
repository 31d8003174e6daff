#include <QSettings>

#include "user_defaults.h"

namespace quenchly {
namespace {

class SettingsFile final : public UserDefaults {
public:
    explicit SettingsFile(const std::filesystem::path& file)
        : settings_(QString::fromStdString(file.string()), QSettings::IniFormat)
    {
    }

    bool contains(const std::string& key) const override { return settings_.contains(QString::fromStdString(key)); }

    void setBool(const std::string& key, bool value) override
    {
        settings_.setValue(QString::fromStdString(key), value);
        settings_.sync();
    }

private:
    QSettings settings_;
};

}  // namespace

std::unique_ptr<UserDefaults> makeUserDefaults(const std::filesystem::path& settingsFolder)
{
    return std::make_unique<SettingsFile>(settingsFolder / "quenchly" / "settings.ini");
}

}  // namespace quenchly
