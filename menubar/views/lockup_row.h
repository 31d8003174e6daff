#pragma once

#include <QWidget>

#include "menu_content.h"

namespace quenchly {

class HelpIcon;
class TextLabel;

/// Whether Protection is on, with its help, and at the end of the line what there is to say about the last check. That
/// has its place whether there is something to say or not: on the line, or below it where the two are too long for one.
class LockupRow : public QWidget {
    Q_OBJECT

public:
    LockupRow(int width, QWidget* parent);

    void setContent(const MenuContent::Header& content);

private:
    void place();
    int widestLastCheck() const;

    TextLabel* lockup_;
    HelpIcon* help_;
    TextLabel* lastCheck_;
};

}  // namespace quenchly
