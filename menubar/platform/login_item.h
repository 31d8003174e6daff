#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace quenchly {

/// The application's entry in the user's login items.
class LoginItem {
public:
    /// `requiresApproval`: it is there, but the user has switched it off in the system's own settings.
    enum class Status { notRegistered, enabled, requiresApproval, notFound };

    virtual ~LoginItem() = default;
    virtual Status status() const = 0;

    /// Each returns an empty text on success, else the reason as the system words it. Registering does not overrule
    /// what the user has switched off.
    virtual std::string registerItem() = 0;
    virtual std::string unregisterItem() = 0;

    /// For when a person asks for an item that requires approval: gives it, or brings up where it is given.
    virtual void requestApproval() = 0;
};

/// Where login items are files, and what they start. Not used by systems that keep them otherwise.
struct LoginItemPlaces {
    std::filesystem::path settingsFolder;
    /// The folders of the same kind for all users, the most important first; one's own entry overrides theirs.
    std::vector<std::filesystem::path> systemSettingsFolders;
    std::filesystem::path executable;
};

std::unique_ptr<LoginItem> makeLoginItem(const LoginItemPlaces& places);

}  // namespace quenchly
