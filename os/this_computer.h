#pragma once

namespace quenchly {

/// Whether what this system runs on is called a Mac.
bool thisComputerIsAMac() noexcept;

}  // namespace quenchly
