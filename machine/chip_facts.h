#pragma once

#include <string>

#include "chip_label.h"

namespace quenchly::ChipLabel {

/// The trimmed standard output of a command line run by /bin/sh; empty when it cannot be run or is not UTF-8. Blocks
/// until the command closes its output.
std::string shell(const std::string& commandLine);

/// What the running system says about itself; empty where it says nothing. On macOS child processes are run and waited
/// for.
Facts facts();

/// The label of this machine.
std::string machine();

}  // namespace quenchly::ChipLabel
