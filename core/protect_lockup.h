#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The texts of the Protection row, in the language in force.
namespace quenchly::ProtectLockup {

inline constexpr std::string_view checksNotSetUp = "checks_not_set_up";
inline constexpr std::string_view extraOn = "extra_on";
inline constexpr std::string_view protectionOn = "protection_on";
inline constexpr std::string_view protectionOff = "protection_off";
inline constexpr std::string_view retainingMemoryOn = "retaining_memory_on";
inline constexpr std::string_view retainingMemory = "retaining_memory";  ///< not used by the application itself

struct Facts {
    bool protectOn = false;
    bool workSaved = false;  ///< does not change any text
    bool agentInstalled = false;
};

/// The short word beside the menu bar glyph.
std::string extra(const Facts& facts);

/// The words in the panel's header.
std::string panel(const Facts& facts);

/// None unless Protection is on and the background checks are installed.
std::optional<std::string> retainingMemoryFact(const Facts& facts);

}  // namespace quenchly::ProtectLockup
