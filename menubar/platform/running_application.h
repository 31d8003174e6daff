#pragma once

#include <memory>

namespace quenchly {

enum class ActivationPolicy {
    regular,    ///< in the Dock and the application switcher; its windows can come to the front
    accessory,  ///< neither
};

/// This program as the desktop sees it. Desktops that list programs by their windows have nothing to switch.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Brings the program before all others.
    virtual void activate() = 0;
    /// Ends the program from its event loop, soon after this returns. Any thread.
    virtual void terminate() = 0;
};

std::unique_ptr<RunningApplication> makeRunningApplication();

}  // namespace quenchly
