#pragma once

#include <string>
#include <string_view>

/// A machine's chip and model family, such as "M2 Pro MacBook Pro".
namespace quenchly::ChipLabel {

/// The brand string of a processor without its maker's decorations.
std::string normalize(std::string_view brand);

/// The family that a model identifier belongs to; an unknown identifier is its own family.
std::string modelFamily(std::string_view fromModel);

/// What a system says about itself; empty where it says nothing.
struct Facts {
    std::string brand;
    std::string model;
};
/// Chip and family in one line; either may be missing, and both.
std::string label(const Facts& facts);

}  // namespace quenchly::ChipLabel
