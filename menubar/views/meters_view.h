#pragma once

#include <QWidget>

#include "metrics_meters.h"

namespace quenchly {

class HelpIcon;
class MeterBar;
class TextLabel;

/// One meter: its label with help and its value, and the bar below them.
class MeterView : public QWidget {
    Q_OBJECT

public:
    explicit MeterView(QWidget* parent = nullptr);

    void setContent(const MeterContent& content);

    /// What the figures need at the end of the line, and what they get there. The help stands before them.
    int neededForFigures() const;
    void setRoomForFigures(int width);

private:
    TextLabel* label_;
    HelpIcon* help_;
    QWidget* figures_;
    TextLabel* subtitle_;
    TextLabel* value_;
    MeterBar* bar_;
};

/// The meters of load and of swap.
class MetersView : public QWidget {
    Q_OBJECT

public:
    explicit MetersView(QWidget* parent = nullptr);

    void setContent(const MetricsMeters& meters);

private:
    MeterView* load_;
    MeterView* swap_;
};

}  // namespace quenchly
