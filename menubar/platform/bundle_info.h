#pragma once

#include <map>
#include <optional>
#include <string>

namespace quenchly {

/// The values of a bundle's information dictionary that are texts.
using BundleInfo = std::map<std::string, std::string>;

inline std::optional<std::string> bundleText(const BundleInfo& info, const std::string& key)
{
    const auto entry = info.find(key);
    return entry == info.end() ? std::nullopt : std::optional(entry->second);
}

inline std::optional<std::string> bundleVersion(const BundleInfo& info)
{
    return bundleText(info, "CFBundleShortVersionString");
}

}  // namespace quenchly
