#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace quenchly {

/// The application's entry in the user's login items.
class LoginItem {
public:
    enum class Status { notRegistered, enabled, requiresApproval, notFound };

    virtual ~LoginItem() = default;
    virtual Status status() const = 0;

    /// Each returns an empty text on success, else the reason as the system words it.
    virtual std::string registerItem() = 0;
    virtual std::string unregisterItem() = 0;
};

/// The login item of this program. Systems that keep login items as files have them below `settingsFolder`, and such a
/// file starts `executable`.
std::unique_ptr<LoginItem> makeLoginItem(const std::filesystem::path& settingsFolder,
                                         const std::filesystem::path& executable);

}  // namespace quenchly
