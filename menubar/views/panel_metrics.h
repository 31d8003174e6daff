#pragma once

/// The sizes of the panel, in points.
namespace quenchly::PanelMetrics {

inline constexpr int panelWidth = 380;
inline constexpr int margin = 16;  ///< at the left and the right of everything

inline constexpr int brandSize = 18;
inline constexpr int lockupSize = 16;
inline constexpr int bodySize = 15;
inline constexpr int secondarySize = 14;
inline constexpr int sectionSize = 13;
inline constexpr int footerSize = 12;

inline constexpr int headerIcon = 40;
inline constexpr int headerStatusDot = 10;
inline constexpr int targetDot = 14;
inline constexpr int rowPadV = 4;

inline constexpr int stripeHeight = 3;
inline constexpr double cornerRadius = 12;

}  // namespace quenchly::PanelMetrics
