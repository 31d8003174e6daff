#include "header_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "brand_icon.h"
#include "help_icon.h"
#include "l10n.h"
#include "meters_view.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "text_label.h"

namespace quenchly {
namespace {

using namespace PanelMetrics;

constexpr int paddingV = 12;
constexpr int betweenIconAndColumn = 7;  // the icon's widget has room for the dot at its right
constexpr int betweenLines = 4;
constexpr int betweenBlocks = 4;  // on top of the space between lines
constexpr int betweenTriggers = 10;
constexpr int mostHeadlineLines = 4;
constexpr int mostDetailLines = 8;

}  // namespace

HeaderView::HeaderView(QWidget* parent) : QWidget(parent)
{
    icon_ = new BrandIcon(this);
    headline_ = new TextLabel({.pixelSize = brandSize,
                               .weight = QFont::DemiBold,
                               .ink = PanelColors::inkText,
                               .mostLines = mostHeadlineLines,
                               .lineHeight = 1.25},
                              this);
    QWidget* lockupRow = makeLockupRow();
    lastCheck_ = new TextLabel({.pixelSize = secondarySize, .ink = PanelColors::inkMuted}, this);
    meters_ = new MetersView(this);
    detail_ = new TextLabel(
        {.pixelSize = secondarySize, .ink = PanelColors::inkMuted, .mostLines = mostDetailLines, .lineHeight = 1.35},
        this);
    triggers_ = makeTriggers();

    auto* column = new QVBoxLayout;
    column->setSpacing(betweenLines);
    column->addWidget(headline_);
    column->addWidget(lockupRow);
    column->addWidget(lastCheck_);
    column->addWidget(meters_);
    column->addSpacing(betweenBlocks);
    column->addWidget(detail_);
    column->addWidget(triggers_);

    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(margin, paddingV, margin, paddingV);
    columns->setSpacing(betweenIconAndColumn);
    columns->addWidget(icon_, 0, Qt::AlignTop);
    columns->addLayout(column, 1);
}

QWidget* HeaderView::makeLockupRow()
{
    auto* row = new QWidget(this);
    lockup_ = new TextLabel({.pixelSize = lockupSize, .weight = QFont::DemiBold, .ink = PanelColors::gold}, row);
    lockupHelp_ = new HelpIcon(row);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(2);
    line->addWidget(lockup_);
    line->addWidget(lockupHelp_);
    line->addStretch(1);
    return row;
}

QWidget* HeaderView::makeTriggers()
{
    auto* row = new QWidget(this);
    statusHelp_ = new HelpIcon(row);
    statusHelp_->setTitle(L10n::t("status"));
    memoryTip_ = new HelpIcon(row);
    memoryTip_->setTitle(L10n::t("extra_memory_tip"));
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 2, 0, 0);
    line->setSpacing(betweenTriggers);
    line->addWidget(statusHelp_);
    line->addWidget(memoryTip_);
    line->addStretch(1);
    return row;
}

void HeaderView::setContent(const MenuContent::Header& content)
{
    icon_->setTint(content.tint);
    headline_->showText(content.headline);
    lockup_->showText(content.lockup);
    lockup_->setInk(content.lockupTone == MenuTone::gold ? PanelColors::gold : PanelColors::clay);
    lockupHelp_->setHelp(content.lockupHelp);
    lastCheck_->showText(content.lastCheck);
    if (content.meters)
        meters_->setContent(*content.meters);
    meters_->setVisible(content.meters.has_value());
    detail_->showText(content.detail);
    statusHelp_->setHelp(content.statusHelp);
    memoryTip_->setHelp(content.memoryTip);
    triggers_->setVisible(!content.statusHelp.empty() || !content.memoryTip.empty());
}

}  // namespace quenchly
