#pragma once

#include <QAbstractButton>
#include <QRectF>

class QPainter;

namespace quenchly {

/// What the panel's buttons have in common: Return and Space press them, the arrow keys are left to the panel, and the
/// focus shows while the keyboard or an assistive technology moves it.
class PanelButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit PanelButton(QWidget* parent = nullptr);

protected:
    /// Paints the ring around the focus, if it is here and shows.
    void paintFocus(QPainter& painter, const QRectF& around, double radius) const;

    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    bool focusShows_ = false;
};

}  // namespace quenchly
