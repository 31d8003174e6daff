#pragma once

#include <QColor>
#include <QWidget>

#include "quench_status.h"

namespace quenchly {

/// The application's icon with a dot in the colour of the status at its lower right corner.
class BrandIcon : public QWidget {
    Q_OBJECT

public:
    explicit BrandIcon(QWidget* parent = nullptr);

    void setTint(QuenchBarTint tint);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor dot_;
};

}  // namespace quenchly
