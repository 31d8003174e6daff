#pragma once

#include "system.h"

namespace quenchly {

/// A menu bar program's window can come before those of others only while the program counts as a regular one.
inline void leaveMenuBar(const System& system)
{
    system.application->setActivationPolicy(ActivationPolicy::regular);
}

inline void comeToForeground(const System& system)
{
    leaveMenuBar(system);
    system.application->activate();
}

inline void returnToMenuBar(const System& system)
{
    system.application->setActivationPolicy(ActivationPolicy::accessory);
}

}  // namespace quenchly
