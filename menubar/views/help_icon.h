#pragma once

#include <QPointer>
#include <string>

#include "panel_button.h"
#include "text_lines.h"

namespace quenchly {

class HelpPopover;

/// The question mark beside a row. Pressing it opens and closes a popover with the row's help text.
class HelpIcon : public PanelButton {
    Q_OBJECT

public:
    static constexpr int side = 18;
    static constexpr int inset = 3;  ///< of the symbol; by so much it goes beyond a margin to stand in line with texts

    explicit HelpIcon(QWidget* parent = nullptr);

    /// An empty text hides the icon.
    void setHelp(const std::string& utf8);
    /// A word in front of the question mark; pressing it is pressing the icon.
    void setTitle(const std::string& utf8);

    bool isPopoverOpen() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void togglePopover();

    mutable TextLines::Line title_;
    QString help_;
    QPointer<HelpPopover> popover_;
};

}  // namespace quenchly
