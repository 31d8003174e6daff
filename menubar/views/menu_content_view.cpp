#include "menu_content_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <initializer_list>

#include "actions_view.h"
#include "hairline.h"
#include "header_view.h"
#include "help_icon.h"
#include "menu_rows.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "set_aside_view.h"
#include "targets_view.h"
#include "text_label.h"

namespace quenchly {
namespace {

using namespace PanelMetrics;

constexpr int footerTop = 8;
constexpr int footerBottom = 12;
constexpr double footerOpacity = 0.85;

/// A layout passes on what it needs once the event loop has run; the height is needed before. Of widgets that are not
/// visible it passes on nothing, so that there every layout has to count as changed.
void layOut(QWidget& widget, bool all)
{
    for (QObject* child : widget.children())
        if (child->isWidgetType() && !static_cast<QWidget*>(child)->isWindow())
            layOut(*static_cast<QWidget*>(child), all);
    if (widget.layout() == nullptr)
        return;
    if (all)
        widget.layout()->invalidate();
    widget.layout()->activate();
}

}  // namespace

MenuContentView::MenuContentView(QWidget* parent) : QWidget(parent)
{
    header_ = new HeaderView(this);
    auto* belowHeader = new Hairline(this);
    targets_ = new TargetsView(this);
    setAsideSection_ = makeSetAside();
    auto* aboveActions = new Hairline(this);
    actions_ = new ActionsView(this);
    auto* aboveFooter = new Hairline(this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (QWidget* section : std::initializer_list<QWidget*>{header_, belowHeader, targets_, setAsideSection_,
                                                            aboveActions, actions_, aboveFooter, makeFooter()})
        column->addWidget(section);
    column->addStretch(1);
    for (QWidget* rows : {setAsideSection_, static_cast<QWidget*>(actions_)})
        rows->installEventFilter(this);
    connect(actions_, &ActionsView::triggered, this, &MenuContentView::triggered);
    connect(setAside_, &SetAsideView::acknowledged, this, &MenuContentView::acknowledged);
    connect(setAside_, &SetAsideView::allAcknowledged, this, &MenuContentView::allAcknowledged);
}

QWidget* MenuContentView::makeSetAside()
{
    auto* section = new QWidget(this);
    auto* hairline = new Hairline(section);
    setAside_ = new SetAsideView(section);
    auto* column = new QVBoxLayout(section);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(hairline);
    column->addWidget(setAside_);
    return section;
}

QWidget* MenuContentView::makeFooter()
{
    auto* footer = new QWidget(this);
    const TextStyle style{.pixelSize = footerSize, .ink = PanelColors::faded(PanelColors::inkMuted, footerOpacity)};
    version_ = new TextLabel(style, footer);
    updates_ = new TextLabel(style, footer);
    updates_->setAlignment(Qt::AlignRight);
    auto* line = new QHBoxLayout(footer);
    line->setContentsMargins(margin, footerTop, margin, footerBottom);
    line->addWidget(version_);
    line->addStretch(1);
    line->addWidget(updates_);
    return footer;
}

void MenuContentView::setContent(const MenuContent& content)
{
    const bool keepsRows = isVisible() && haveSameRows(content, content_);
    isBehind_ = isVisible() && !keepsRows && (underPointer_ != nullptr || listTheSame(content, content_));
    if (isBehind_)
        present(withRowsOf(content_, content), true);
    else
        present(content, keepsRows);
}

void MenuContentView::present(const MenuContent& content, bool keepsRows)
{
    if (content == content_ && keepsRows)
        return;
    content_ = content;
    header_->setContent(content.header, keepsRows);
    targets_->setContent(content.targets);
    if (content.setAside)
        setAside_->setContent(*content.setAside);
    setAsideSection_->setVisible(content.setAside.has_value());
    actions_->setContent(content.actions);
    version_->showText(content.footer.version);
    updates_->showText(content.footer.updates);
    layOut(*this, !isVisible());
}

int MenuContentView::contentHeight() const
{
    return layout()->totalHeightForWidth(panelWidth);
}

bool MenuContentView::moveFocus(const QKeyEvent& event)
{
    const bool forwards = event.key() == Qt::Key_Down || event.key() == Qt::Key_Right;
    const bool backwards = event.key() == Qt::Key_Up || event.key() == Qt::Key_Left;
    if (!forwards && !backwards)
        return false;
    const bool alongRow = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
    std::vector<QWidget*> stops = focusStops();
    if (backwards)
        std::reverse(stops.begin(), stops.end());
    const auto current = std::find(stops.begin(), stops.end(), window()->focusWidget());
    if (current != stops.end())
        std::rotate(stops.begin(), current + 1, stops.end());
    const auto next = std::find_if(stops.begin(), stops.end(), [alongRow](QWidget* stop) {
        return alongRow || qobject_cast<HelpIcon*>(stop) == nullptr;
    });
    if (next == stops.end())
        return true;
    (*next)->setFocus(backwards ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    Q_EMIT focusMoved(*next);
    return true;
}

std::vector<QWidget*> MenuContentView::focusStops() const
{
    std::vector<QWidget*> stops;
    for (QWidget* widget = nextInFocusChain(); widget != this; widget = widget->nextInFocusChain())
        if (isAncestorOf(widget) && widget->isVisible() && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus) != 0)
            stops.push_back(widget);
    return stops;
}

bool MenuContentView::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Enter) {
        underPointer_ = object;
    } else if ((event->type() == QEvent::Leave || event->type() == QEvent::Hide) && underPointer_ == object) {
        underPointer_ = nullptr;
        if (isBehind_ && event->type() == QEvent::Leave)  // a closed panel has nothing to catch up with
            Q_EMIT released();
    }
    return QWidget::eventFilter(object, event);
}

void MenuContentView::keyPressEvent(QKeyEvent* event)
{
    if (!moveFocus(*event))
        QWidget::keyPressEvent(event);
}

}  // namespace quenchly
