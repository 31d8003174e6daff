#pragma once

#include <string>
#include <string_view>

/// The machine's chip and model family, such as "M2 Pro MacBook Pro".
namespace quenchly::ChipLabel {

/// The trimmed standard output of a command line run by /bin/sh; empty when it cannot be run or is not UTF-8. Blocks
/// until the command closes its output.
std::string shell(const std::string& commandLine);

/// The brand string of a processor without its maker's decorations.
std::string normalize(std::string_view brand);

/// The family that a model identifier belongs to; an unknown identifier is its own family.
std::string modelFamily(std::string_view fromModel);

struct Facts {
    std::string brand;
    std::string model;
};
/// What the running system says about itself; empty where it says nothing.
Facts facts();

/// Chip and family in one line; either may be missing, and both.
std::string label(const Facts& facts);

/// The label of this machine.
std::string machine();

}  // namespace quenchly::ChipLabel
