#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "system.h"

namespace quenchly {

/// Updates of this program, through the framework in its bundle. Interface thread.
class Updater : public QObject {
    Q_OBJECT

public:
    /// Starts nothing yet: the first use of it starts the framework when the bundle names a feed and a key, else logs
    /// that it does not.
    explicit Updater(System system, QObject* parent = nullptr);
    ~Updater() override;

    /// Whether updates can be checked for: the bundle is configured and its framework runs.
    bool isConfigured() const { return backend() != nullptr; }

    /// False when not configured.
    bool automaticChecksEnabled() const;
    /// Does nothing when not configured.
    void setAutomaticChecksEnabled(bool enabled);

    /// Shows the framework's windows, or the alert below when not configured.
    void checkForUpdates();
    /// Returns when the user has closed it.
    void showNotConfiguredAlert() const;

    /// Whether an information dictionary names an https feed and a real key; a template's placeholder is none.
    static bool isSparkleConfigured(const BundleInfo& info);

Q_SIGNALS:
    /// The setting has changed.
    void published();

private:
    UpdaterBackend* backend() const;
    std::unique_ptr<UpdaterBackend> startedBackend() const;

    System system_;
    mutable std::optional<std::unique_ptr<UpdaterBackend>> backend_;  ///< none before the first use
};

}  // namespace quenchly
