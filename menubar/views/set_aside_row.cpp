#include "set_aside_row.h"

#include <QHBoxLayout>
#include <utility>

#include "help_icon.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "pill_button.h"
#include "text_label.h"

namespace quenchly {
namespace {

constexpr int paddingV = 2;
constexpr int betweenLabelAndAge = 8;
constexpr double mutedOpacity = 0.8;

}  // namespace

SetAsideRow::SetAsideRow(Text id, QWidget* parent) : QWidget(parent), id_(std::move(id))
{
    using namespace PanelMetrics;
    label_ = new TextLabel({.pixelSize = bodySize, .ink = PanelColors::inkText}, this);
    const TextStyle muted{.pixelSize = sectionSize, .ink = PanelColors::faded(PanelColors::inkMuted, mutedOpacity)};
    distinction_ = new TextLabel(muted, this);
    age_ = new TextLabel(muted, this);
    alignBaselines({label_, distinction_, age_}, label_->sizeHint().height());
    age_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    button_ = new PillButton(this);
    help_ = new HelpIcon(this);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, paddingV, 0, paddingV);
    line->setSpacing(betweenLabelAndAge);
    line->addWidget(label_);
    line->addWidget(distinction_);
    line->addWidget(age_);
    line->addStretch(1);
    line->addWidget(button_);
    line->addWidget(help_);
    connect(button_, &PillButton::clicked, this, [this] { Q_EMIT acknowledged(id_); });
}

void SetAsideRow::setContent(const MenuContent::SetAsideEntry& entry, const MenuContent::SetAside& section)
{
    label_->showText(entry.label);
    label_->setFullText(entry.fullText);
    distinction_->showText(entry.distinction);
    age_->showText(entry.age);
    const QString text = QString::fromStdString(section.acknowledge);
    if (button_->text() != text) {
        button_->setText(text);
        button_->updateGeometry();
    }
    const std::string name = entry.label + (entry.distinction.empty() ? "" : " " + entry.distinction);
    button_->describe(name, section.reason);
    button_->setAvailable(section.enabled && entry.isListed);
    help_->setHelp(section.acknowledgeHelp);
}

}  // namespace quenchly
