#pragma once

#include <memory>

namespace quenchly {

/// The update framework shipped with this program. Interface thread.
class UpdaterBackend {
public:
    virtual ~UpdaterBackend() = default;

    virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool enabled) = 0;
    virtual void setAutomaticallyDownloadsUpdates(bool enabled) = 0;
    /// Looks now, and shows the framework's own windows.
    virtual void checkForUpdates() = 0;
};

/// Starts the framework; null when none is shipped or it cannot be loaded.
std::unique_ptr<UpdaterBackend> startUpdaterBackend();

}  // namespace quenchly
