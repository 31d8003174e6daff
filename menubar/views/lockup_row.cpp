#include "lockup_row.h"

#include <algorithm>
#include <cmath>

#include "help_icon.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "recency_copy.h"
#include "text_label.h"

namespace quenchly {
namespace {

using namespace PanelMetrics;

constexpr int gapBeforeHelp = 2;
constexpr int gapBeforeLastCheck = 8;

}  // namespace

LockupRow::LockupRow(int width, QWidget* parent) : QWidget(parent)
{
    lockup_ = new TextLabel({.pixelSize = lockupSize, .weight = QFont::DemiBold, .ink = PanelColors::gold}, this);
    help_ = new HelpIcon(this);
    lastCheck_ = new TextLabel({.pixelSize = footerSize, .ink = PanelColors::inkMuted}, this);
    alignBaselines({lockup_, lastCheck_}, lockup_->sizeHint().height());
    setFixedSize(width, lockup_->sizeHint().height());
}

void LockupRow::setContent(const MenuContent::Header& content)
{
    lockup_->showText(content.lockup);
    lockup_->setInk(content.lockupTone == MenuTone::gold ? PanelColors::gold : PanelColors::clay);
    help_->setHelp(content.lockupHelp);
    lastCheck_->showText(content.lastCheck);
    place();
}

void LockupRow::place()
{
    const QSize lockup(std::min(lockup_->sizeHint().width(), width() - gapBeforeHelp - HelpIcon::side),
                       lockup_->sizeHint().height());
    const int end = lockup.width() + gapBeforeHelp + HelpIcon::side;
    lockup_->setGeometry(QRect(QPoint(0, 0), lockup));
    help_->setGeometry(lockup.width() + gapBeforeHelp, (lockup.height() - HelpIcon::side) / 2, HelpIcon::side,
                       HelpIcon::side);
    const bool isBeside = end + gapBeforeLastCheck + widestLastCheck() <= width();
    lastCheck_->setAlignment(isBeside ? Qt::AlignRight : Qt::AlignLeft);
    lastCheck_->setGeometry(isBeside ? QRect(end, 0, width() - end, lockup.height())
                                     : QRect(0, lockup.height(), width(), lockup.height()));
    setFixedHeight(isBeside ? lockup.height() : 2 * lockup.height());
}

int LockupRow::widestLastCheck() const
{
    const auto width = [this](const std::string& text) {
        return TextLines::width(QString::fromStdString(text), lastCheck_->font());
    };
    return static_cast<int>(
        std::ceil(std::max(width(RecencyCopy::checkingNow()), width(RecencyCopy::checkingInAMoment()))));
}

}  // namespace quenchly
