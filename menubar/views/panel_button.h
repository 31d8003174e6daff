#pragma once

#include <QAbstractButton>
#include <QRectF>
#include <string>

class QPainter;

namespace quenchly {

/// What the panel's buttons have in common: Return and Space press them, the arrow keys are left to the panel, and the
/// focus shows while the keyboard or an assistive technology moves it.
class PanelButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit PanelButton(QWidget* parent = nullptr);

    /// Enables or disables the button. A disabled widget cannot hold the focus; unless it is moved or the button
    /// hidden meanwhile it comes back with the button.
    void setAvailable(bool available);
    /// What screen readers say after the button's name. Why it is grey comes first and is its tooltip, too; empty where
    /// there is nothing to say about that.
    void describe(const std::string& description, const std::string& reason);
    /// Takes over the focus that another button has, or waits for while it is disabled.
    void inheritFocus(const PanelButton& from);

protected:
    /// Paints the ring around the focus, if it is here and shows.
    void paintFocus(QPainter& painter, const QRectF& around, double radius) const;

    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool focusShows_ = false;
    bool awaitsFocus_ = false;
};

}  // namespace quenchly
