#include "action_row.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "help_icon.h"
#include "l10n.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "text_label.h"

namespace quenchly {
namespace {

using namespace PanelMetrics;

constexpr int gapBeforeHelp = 8;
constexpr int gapBeforeTrailing = 12;
constexpr double hoverOpacity = 0.07;
constexpr double pressedOpacity = 0.13;

constexpr int helpStart = panelWidth - margin - HelpIcon::side + HelpIcon::inset;
constexpr int textEnd = helpStart - gapBeforeHelp;

int rowHeight()
{
    const int text = static_cast<int>(std::ceil(QFontMetricsF(panelFont(bodySize)).height()));
    return std::max(HelpIcon::side, text) + 2 * rowPadV;
}

/// For who cannot see the trailing text and the help icon beside the title.
std::string description(const MenuContent::Row& row)
{
    return row.trailing.empty() ? row.help : L10n::tf("two_sentences", {row.trailing, row.help});
}

}  // namespace

ActionButton::ActionButton(QWidget* parent) : PanelButton(parent), trailingFont_(panelFont(secondarySize))
{
    setFont(panelFont(bodySize));
}

void ActionButton::setTrailing(const QString& trailing)
{
    if (trailing_ == trailing)
        return;
    trailing_ = trailing;
    update();
}

void ActionButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (isEnabled() && (isDown() || underMouse()))
        painter.fillRect(rect(), PanelColors::faded(PanelColors::inkText, isDown() ? pressedOpacity : hoverOpacity));
    painter.save();
    if (!isEnabled())
        painter.setOpacity(PanelColors::disabledOpacity);
    trailingLine_.set(trailing_, trailingFont_);
    const double trailingStart = textEnd - trailingLine_.width();
    painter.setPen(PanelColors::gold);
    const double top = topInMiddle(height(), font());
    const double below = QFontMetricsF(font()).ascent() - QFontMetricsF(trailingFont_).ascent();  // on one baseline
    trailingLine_.paint(painter, {trailingStart, top + below});
    const double titleEnd = trailing_.isEmpty() ? textEnd : trailingStart - gapBeforeTrailing;
    title_.set(text(), font(), 1);
    painter.setPen(PanelColors::inkText);
    for (const TextLines::Line& line : title_.lines(titleEnd - margin))
        line.paint(painter, {margin, top});
    painter.restore();
    paintFocus(painter, rect().adjusted(4, 1, -4, -1), 6);
}

ActionRow::ActionRow(QWidget* parent) : QWidget(parent)
{
    setFixedHeight(rowHeight());
    button_ = new ActionButton(this);
    help_ = new HelpIcon(this);
    connect(button_, &ActionButton::clicked, this, [this] { Q_EMIT triggered(action_); });
}

void ActionRow::setContent(const MenuContent::Row& row)
{
    action_ = row.action;
    button_->setText(QString::fromStdString(row.label));
    button_->setTrailing(QString::fromStdString(row.trailing));
    button_->setAvailable(row.enabled);
    button_->describe(description(row), row.reason);
    help_->setHelp(row.help);
}

void ActionRow::followInTabOrder(const ActionRow& previous)
{
    setTabOrder(previous.help_, button_);
    setTabOrder(button_, help_);
}

void ActionRow::resizeEvent(QResizeEvent*)
{
    button_->setGeometry(rect());
    help_->setGeometry(helpStart, (height() - HelpIcon::side) / 2, HelpIcon::side, HelpIcon::side);
}

}  // namespace quenchly
