#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace quenchly {

/// The application's small per-user settings store. Keys are used letter for letter.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// Whether anything is stored under `key`.
    virtual bool contains(const std::string& key) const = 0;
    virtual void setBool(const std::string& key, bool value) = 0;
};

/// The store of this user. Systems that keep settings as files have them below `settingsFolder`.
std::unique_ptr<UserDefaults> makeUserDefaults(const std::filesystem::path& settingsFolder);

}  // namespace quenchly
