#include "spring.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quenchly {
namespace {

constexpr double undampedFrequency = 2 * std::numbers::pi / Spring::response;  // radians per second
constexpr double decay = Spring::dampingFraction * undampedFrequency;
const double frequency = undampedFrequency * std::sqrt(1 - Spring::dampingFraction * Spring::dampingFraction);

/// The oscillation about the end: cosine * cos(frequency * t) + sine * sin(frequency * t), times the decay.
struct Amplitudes {
    double cosine;
    double sine;
};

Amplitudes amplitudes(const Spring& spring)
{
    const double displacement = spring.from - spring.to;
    return {displacement, (spring.initialVelocity + decay * displacement) / frequency};
}

}  // namespace

double Spring::position(double seconds) const
{
    const auto [cosine, sine] = amplitudes(*this);
    const double angle = frequency * seconds;
    return to + std::exp(-decay * seconds) * (cosine * std::cos(angle) + sine * std::sin(angle));
}

double Spring::velocity(double seconds) const
{
    const auto [cosine, sine] = amplitudes(*this);
    const double angle = frequency * seconds;
    return std::exp(-decay * seconds) * ((frequency * sine - decay * cosine) * std::cos(angle) -
                                         (frequency * cosine + decay * sine) * std::sin(angle));
}

double Spring::settledAfter(double distance) const
{
    const auto [cosine, sine] = amplitudes(*this);
    return std::max(0.0, std::log(std::hypot(cosine, sine) / distance) / decay);
}

}  // namespace quenchly
