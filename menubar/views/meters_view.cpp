#include "meters_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "help_icon.h"
#include "meter_bar.h"
#include "panel_colors.h"
#include "text_label.h"

namespace quenchly {
namespace {

constexpr int labelSize = 12;
constexpr int valueSize = 13;
constexpr int spaceBetweenMeters = 8;
constexpr int spaceAboveMeters = 2;
constexpr int spaceAboveBar = 4;
constexpr int leastSpaceAfterLabel = 8;
constexpr int spaceBeforeValue = 6;

/// Of nearly all that there can be.
int leastRoomForFigures()
{
    const double amount = TextLines::width(QStringLiteral("88.8 GB"), panelFont(labelSize, QFont::Medium));
    const double percent = TextLines::width(QStringLiteral("100%"), panelFont(valueSize, QFont::Bold));
    return static_cast<int>(std::ceil(amount)) + spaceBeforeValue + static_cast<int>(std::ceil(percent));
}

}  // namespace

MeterView::MeterView(QWidget* parent) : QWidget(parent)
{
    label_ = new TextLabel({.pixelSize = labelSize, .weight = QFont::DemiBold, .ink = PanelColors::inkMuted}, this);
    help_ = new HelpIcon(this);
    figures_ = new QWidget(this);
    subtitle_ =
        new TextLabel({.pixelSize = labelSize, .weight = QFont::Medium, .ink = PanelColors::inkMuted}, figures_);
    value_ = new TextLabel({.pixelSize = valueSize, .weight = QFont::Bold}, figures_);
    value_->setAlignment(Qt::AlignRight);
    alignBaselines({value_, label_, subtitle_}, HelpIcon::side);
    auto* figures = new QHBoxLayout(figures_);
    figures->setContentsMargins(0, 0, 0, 0);
    figures->setSpacing(spaceBeforeValue);
    figures->addStretch(1);
    figures->addWidget(subtitle_);
    figures->addWidget(value_);
    bar_ = new MeterBar(this);

    auto* line = new QHBoxLayout;
    line->setSpacing(0);
    line->addWidget(label_);
    line->addSpacing(leastSpaceAfterLabel);
    line->addStretch(1);
    line->addWidget(help_);
    line->addSpacing(spaceBeforeValue);
    line->addWidget(figures_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spaceAboveBar);
    column->addLayout(line);
    column->addWidget(bar_);
}

void MeterView::setContent(const MeterContent& content)
{
    label_->showText(content.label);
    help_->setHelp(content.help);
    subtitle_->showText(content.subtitle);
    value_->showText(content.value);
    value_->setInk(QColor::fromRgb(content.accent));
    bar_->setAccent(QColor::fromRgb(content.accent));
    bar_->setFill(content.fill);
    bar_->setAccessibleName(QString::fromStdString(content.label));
    bar_->setAccessibleDescription(QString::fromStdString(content.subtitle + " " + content.value).trimmed());
}

int MeterView::neededForFigures() const
{
    const int subtitle = subtitle_->text().isEmpty() ? 0 : subtitle_->sizeHint().width() + spaceBeforeValue;
    return subtitle + value_->sizeHint().width();
}

void MeterView::setRoomForFigures(int width)
{
    figures_->setFixedWidth(width);
}

MetersView::MetersView(QWidget* parent) : QWidget(parent), load_(new MeterView(this)), swap_(new MeterView(this))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, spaceAboveMeters, 0, 0);
    column->setSpacing(spaceBetweenMeters);
    column->addWidget(load_);
    column->addWidget(swap_);
}

void MetersView::setContent(const MetricsMeters& meters)
{
    load_->setContent(meters.load);
    swap_->setContent(meters.swap);
    // Figures get longer and shorter all the time; what is pressed beside them stays where it is.
    const int room = std::max({leastRoomForFigures(), load_->neededForFigures(), swap_->neededForFigures()});
    load_->setRoomForFigures(room);
    swap_->setRoomForFigures(room);
}

}  // namespace quenchly
