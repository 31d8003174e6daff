#pragma once

#include <QWidget>

#include "menu_content.h"

namespace quenchly {

class LockupRow;
class TextLabel;

/// What is going on: the headline, whether Protection is on, and the detail. There is always room for the longest
/// common headline, so that what stands below does not move from one situation to the next. What has no room is in the
/// headline's tooltip, and for screen readers in its description.
class HeaderStory : public QWidget {
    Q_OBJECT

public:
    enum class Height { asNeeded, asBefore };

    HeaderStory(int width, QWidget* parent);

    void setContent(const MenuContent::Header& content, Height height);

private:
    /// How many lines the texts may take.
    struct Lines {
        int headline;
        int detail;
    };
    int heightWith(const Lines& lines);
    void arrange(Height height);
    void place();

    TextLabel* headline_;
    LockupRow* lockupRow_;
    TextLabel* detail_;
    int leastHeight_;
};

}  // namespace quenchly
