#pragma once

#include <QWidget>

namespace quenchly {

/// A line across the panel, one pixel of the screen thick at every scale.
class Hairline : public QWidget {
    Q_OBJECT

public:
    explicit Hairline(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quenchly
