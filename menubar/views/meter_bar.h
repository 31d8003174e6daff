#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QElapsedTimer>
#include <QProgressBar>

#include "spring.h"

namespace quenchly {

/// The capsule of a meter. Its fill moves to a new value like a spring while it can be seen, and jumps otherwise.
class MeterBar : public QProgressBar {
    Q_OBJECT

public:
    static constexpr int barHeight = 6;

    explicit MeterBar(QWidget* parent = nullptr);

    /// `percent` is 0 to 100.
    void setFill(double percent);
    void setAccent(const QColor& accent);

    /// The fill that is shown at this moment; a spring may carry it beyond 0 or 100.
    double shownFill() const { return shownFill_; }
    bool isMoving() const { return frames_.isActive(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void settle();
    void showFill(double percent);
    /// The filled length in points.
    double filledWidth(double percent) const;

    QColor accent_;
    Spring spring_;
    QElapsedTimer sinceLetGo_;
    QBasicTimer frames_;
    double shownFill_ = 0;
};

}  // namespace quenchly
