#pragma once

#include <QWidget>

#include "menu_content.h"

namespace quenchly {

class BrandIcon;
class HelpIcon;
class MetersView;
class TextLabel;

/// The upper part of the panel: the icon, and beside it what is going on.
class HeaderView : public QWidget {
    Q_OBJECT

public:
    explicit HeaderView(QWidget* parent = nullptr);

    void setContent(const MenuContent::Header& content);

private:
    QWidget* makeLockupRow();
    QWidget* makeTriggers();

    BrandIcon* icon_;
    TextLabel* headline_;
    TextLabel* lockup_;
    HelpIcon* lockupHelp_;
    TextLabel* lastCheck_;
    MetersView* meters_;
    TextLabel* detail_;
    QWidget* triggers_;
    HelpIcon* statusHelp_;
    HelpIcon* memoryTip_;
};

}  // namespace quenchly
