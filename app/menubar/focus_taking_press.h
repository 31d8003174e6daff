#pragma once

#include <QPoint>
#include <chrono>
#include <optional>

namespace quenchly {

/// The press on the item that takes the focus from the open panel, and so closes it, before the item hears of it: it
/// must not open the panel again. Every other press does.
class FocusTakingPress {
public:
    struct Moment {
        QPoint pointer;  ///< in screen coordinates
        std::chrono::milliseconds time{};
    };

    /// The panel has just lost the focus, which closes it unless a help popover is open.
    void panelLostFocus(const Moment& moment) { focusLost_ = moment; }

    /// Whether a press that the item hears of now is the one that took the focus. Says so once for each loss.
    bool isHeardAt(const Moment& moment);

    /// Whatever took the focus has been heard of.
    void forget() { focusLost_.reset(); }

private:
    std::optional<Moment> focusLost_;
};

}  // namespace quenchly
