#pragma once

#include <QWidget>

#include "menu_content.h"

namespace quenchly {

class BrandIcon;
class HeaderStory;
class HelpIcon;
class MetersView;

/// The upper part of the panel: the icon, and beside it what is going on.
class HeaderView : public QWidget {
    Q_OBJECT

public:
    explicit HeaderView(QWidget* parent = nullptr);

    /// `keepsHeight`: what needs more room than there is goes without.
    void setContent(const MenuContent::Header& content, bool keepsHeight);

private:
    QWidget* makeTriggers();

    BrandIcon* icon_;
    HeaderStory* story_;
    MetersView* meters_;
    QWidget* triggers_;
    HelpIcon* statusHelp_;
    HelpIcon* memoryTip_;
};

}  // namespace quenchly
