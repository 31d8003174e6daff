#pragma once

#include "panel_button.h"
#include "text_lines.h"

namespace quenchly {

/// A small button with an outline, as wide as its text.
class PillButton : public PanelButton {
    Q_OBJECT

public:
    explicit PillButton(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    mutable TextLines::Line line_;
};

}  // namespace quenchly
