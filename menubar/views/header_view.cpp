#include "header_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "brand_icon.h"
#include "header_story.h"
#include "help_icon.h"
#include "l10n.h"
#include "meters_view.h"
#include "panel_metrics.h"
#include "text_label.h"

namespace quenchly {
namespace {

using namespace PanelMetrics;

constexpr int paddingV = 12;
constexpr int betweenIconAndColumn = 7;  // the icon's widget has room for the dot at its right
constexpr int betweenLines = 4;
constexpr int aboveTriggers = 2;
constexpr int betweenTriggers = 10;

}  // namespace

HeaderView::HeaderView(QWidget* parent) : QWidget(parent)
{
    icon_ = new BrandIcon(this);
    story_ = new HeaderStory(panelWidth - 2 * margin - icon_->width() - betweenIconAndColumn, this);
    meters_ = new MetersView(this);
    triggers_ = makeTriggers();

    auto* column = new QVBoxLayout;
    column->setSpacing(betweenLines);
    column->addWidget(story_);
    column->addWidget(meters_);
    column->addWidget(triggers_);

    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(margin, paddingV, margin, paddingV);
    columns->setSpacing(betweenIconAndColumn);
    columns->addWidget(icon_, 0, Qt::AlignTop);
    columns->addLayout(column, 1);
}

QWidget* HeaderView::makeTriggers()
{
    auto* row = new QWidget(this);
    row->setFixedHeight(aboveTriggers + HelpIcon::side);
    keepPlaceWhenHidden(*row);
    statusHelp_ = new HelpIcon(row);
    statusHelp_->setTitle(L10n::t("status"));
    memoryTip_ = new HelpIcon(row);
    memoryTip_->setTitle(L10n::t("extra_memory_tip"));
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, aboveTriggers, 0, 0);
    line->setSpacing(betweenTriggers);
    line->addWidget(statusHelp_);
    line->addWidget(memoryTip_);
    line->addStretch(1);
    return row;
}

void HeaderView::setContent(const MenuContent::Header& content, bool keepsHeight)
{
    icon_->setTint(content.tint);
    story_->setContent(content, keepsHeight ? HeaderStory::Height::asBefore : HeaderStory::Height::asNeeded);
    if (content.meters)
        meters_->setContent(*content.meters);
    meters_->setVisible(content.meters.has_value());
    statusHelp_->setHelp(content.statusHelp);
    memoryTip_->setHelp(content.memoryTip);
    triggers_->setVisible(!content.statusHelp.empty() || !content.memoryTip.empty());
}

}  // namespace quenchly
