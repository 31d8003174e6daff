#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace quenchly {

/// The integer that `value` holds, clamped to 64 bits; NaN gives 0. A value that rounds to zero has no sign left.
inline std::int64_t clampedInteger(double value) noexcept
{
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (std::isnan(value))
        return 0;
    if (value >= limit)
        return std::numeric_limits<std::int64_t>::max();
    if (value < -limit)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

/// The nearest integer, halves away from zero, clamped to 64 bits.
inline std::int64_t roundedInteger(double value) noexcept
{
    return clampedInteger(std::round(value));
}

}  // namespace quenchly
