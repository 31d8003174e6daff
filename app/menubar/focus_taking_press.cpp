#include "focus_taking_press.h"

#include <utility>

namespace quenchly {
namespace {

using namespace std::chrono_literals;

/// Many hosts tell of a press when the button is let go.
constexpr std::chrono::milliseconds longestClick = 1000ms;
/// A pointer that moved further in between has pressed somewhere else before.
constexpr int longestWay = 10;

}  // namespace

bool FocusTakingPress::isHeardAt(const Moment& moment)
{
    const std::optional<Moment> lost = std::exchange(focusLost_, std::nullopt);
    return lost && moment.time - lost->time <= longestClick &&
           (moment.pointer - lost->pointer).manhattanLength() <= longestWay;
}

}  // namespace quenchly
