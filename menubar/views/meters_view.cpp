#include "meters_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

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

}  // namespace

MeterView::MeterView(QWidget* parent) : QWidget(parent)
{
    label_ = new TextLabel({.pixelSize = labelSize, .weight = QFont::DemiBold, .ink = PanelColors::inkMuted}, this);
    help_ = new HelpIcon(this);
    subtitle_ = new TextLabel({.pixelSize = labelSize, .weight = QFont::Medium, .ink = PanelColors::inkMuted}, this);
    value_ = new TextLabel({.pixelSize = valueSize, .weight = QFont::Bold}, this);
    value_->setAlignment(Qt::AlignRight);
    bar_ = new MeterBar(this);

    auto* line = new QHBoxLayout;
    line->setSpacing(0);
    line->addWidget(label_);
    line->addSpacing(leastSpaceAfterLabel);
    line->addStretch(1);
    line->addWidget(help_);
    line->addSpacing(spaceBeforeValue);
    line->addWidget(subtitle_);
    line->addSpacing(spaceBeforeValue);
    line->addWidget(value_);
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
}

}  // namespace quenchly
