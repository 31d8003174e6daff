#pragma once

namespace quenchly {

/// A damped spring on its way from one place to another, as a closed form of the time since it was let go: at any
/// moment, however late a frame comes, it is where it should be.
struct Spring {
    static constexpr double response = 0.55;  ///< seconds of one undamped oscillation
    static constexpr double dampingFraction = 0.84;

    double from = 0;
    double to = 0;
    double initialVelocity = 0;  ///< per second

    double position(double seconds) const;
    double velocity(double seconds) const;

    /// Seconds after which it stays closer to its end than `distance`, which must be above 0.
    double settledAfter(double distance) const;
};

}  // namespace quenchly
