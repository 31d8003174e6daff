#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace quenchly {

/// The raw texts of an enumeration's cases, in case order. Each enumeration that has raw texts specialises this
/// beside its definition.
template <class E>
inline constexpr std::array<std::string_view, 0> rawValues{};

/// The raw text of a case, as it stands in the state files.
template <class E>
constexpr std::string_view rawValue(E value) noexcept
{
    return rawValues<E>[static_cast<std::size_t>(value)];
}

/// The case whose raw text is exactly `text`; none when there is no such case.
template <class E>
constexpr std::optional<E> fromRawValue(std::string_view text) noexcept
{
    for (std::size_t i = 0; i < rawValues<E>.size(); ++i)
        if (rawValues<E>[i] == text)
            return static_cast<E>(i);
    return std::nullopt;
}

}  // namespace quenchly
