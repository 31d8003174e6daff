#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

namespace quenchly::soak {

/// Chance that is the same for the same seed, on every machine.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    /// From 0 to `count` - 1; `count` is above 0.
    std::size_t below(std::size_t count) { return engine_() % count; }
    bool oneIn(std::size_t count) { return below(count) == 0; }

    template <typename Container>
    const auto& oneOf(const Container& all)
    {
        return all[below(std::size(all))];
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace quenchly::soak
