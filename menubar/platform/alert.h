#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quenchly {

/// A notice or a question before everything else of this program. All texts are plain.
struct Alert {
    std::string title;
    std::string text;
    std::vector<std::string> buttons;  ///< in the order in which they are read; Return presses the first

    bool operator==(const Alert&) const = default;
};

/// Shows the alert until it is answered: the button's place among `buttons`, none when it was closed without one or the
/// program is told to end. Interface thread; needs a QApplication.
std::optional<std::size_t> runAlert(const Alert& alert);

}  // namespace quenchly
