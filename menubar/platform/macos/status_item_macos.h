#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quenchly {

/// One picture at several resolutions, each a whole PNG file.
struct StatusItemImage {
    double widthInPoints = 0;
    double heightInPoints = 0;
    std::vector<std::string> pngFiles;
};

/// The two weights of the text, in reading order.
struct StatusItemTitle {
    std::string bold;
    std::string semibold;
};

/// In points, rightwards and downwards from the top left of the primary screen.
struct ScreenPoint {
    double x = 0;
    double y = 0;
};

/// The item in the menu bar, without a word of Objective-C so that Qt code can own it.
class StatusItem {
public:
    /// `pressed` gets the bottom left corner of the item, nothing while the item is on no screen.
    explicit StatusItem(std::function<void(std::optional<ScreenPoint>)> pressed);
    ~StatusItem();
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;

    void setImage(const StatusItemImage& image);
    void setTitle(const StatusItemTitle& title);
    void setToolTip(const std::string& toolTip);
    void setAccessibilityLabel(const std::string& label);

private:
    struct Native;
    std::unique_ptr<Native> native_;
};

}  // namespace quenchly
