#include "section_heading.h"

#include <QHBoxLayout>

#include "help_icon.h"
#include "panel_metrics.h"
#include "text_label.h"

namespace quenchly {

SectionHeading::SectionHeading(const QColor& ink, QWidget* parent) : QWidget(parent)
{
    heading_ = new TextLabel({.pixelSize = PanelMetrics::sectionSize, .weight = QFont::DemiBold, .ink = ink}, this);
    help_ = new HelpIcon(this);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(2);
    line->addWidget(heading_);
    line->addWidget(help_);
    line->addStretch(1);
}

void SectionHeading::setContent(const std::string& heading, const std::string& help)
{
    heading_->showText(heading);
    help_->setHelp(help);
}

}  // namespace quenchly
