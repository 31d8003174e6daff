#include "set_aside_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "help_icon.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "pill_button.h"
#include "section_heading.h"
#include "set_aside_row.h"
#include "text_label.h"

namespace quenchly {
namespace {

using namespace PanelMetrics;

constexpr int paddingV = 10;
constexpr int betweenButtonAndHelp = 8;
constexpr double noteOpacity = 0.8;

}  // namespace

SetAsideView::SetAsideView(QWidget* parent) : QWidget(parent)
{
    heading_ = new SectionHeading(PanelColors::clay, this);
    rowColumn_ = new QVBoxLayout;
    rowColumn_->setSpacing(0);
    clearAllRow_ = makeClearAll();
    footnote_ =
        new TextLabel({.pixelSize = footerSize, .ink = PanelColors::faded(PanelColors::inkMuted, noteOpacity)}, this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, paddingV, margin - HelpIcon::inset, paddingV);
    column->setSpacing(4);
    column->addWidget(heading_);
    column->addLayout(rowColumn_);
    column->addWidget(clearAllRow_);
    column->addWidget(footnote_);
}

QWidget* SetAsideView::makeClearAll()
{
    auto* row = new QWidget(this);
    clearAll_ = new PillButton(row);
    clearAllHelp_ = new HelpIcon(row);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(betweenButtonAndHelp);
    line->addStretch(1);
    line->addWidget(clearAll_);
    line->addWidget(clearAllHelp_);
    connect(clearAll_, &PillButton::clicked, this, &SetAsideView::allAcknowledged);
    return row;
}

void SetAsideView::setContent(const MenuContent::SetAside& content)
{
    heading_->setContent(content.heading, content.help);
    showEntries(content);
    const QString clearAll = QString::fromStdString(content.clearAll);
    if (clearAll_->text() != clearAll) {
        clearAll_->setText(clearAll);
        clearAll_->updateGeometry();
    }
    clearAll_->describe(content.clearAllHelp, content.reason);
    clearAll_->setAvailable(content.enabled && content.showsAll);
    clearAllHelp_->setHelp(content.clearAllHelp);
    clearAllRow_->setVisible(!content.clearAll.empty());
    footnote_->showText(content.footnote);
}

void SetAsideView::showEntries(const MenuContent::SetAside& content)
{
    std::vector<SetAsideRow*> rows;
    for (const MenuContent::SetAsideEntry& entry : content.entries) {
        rows.push_back(takeRow(entry.id));
        rows.back()->setContent(entry, content);
    }
    const auto firstListed = std::ranges::find(content.entries, true, &MenuContent::SetAsideEntry::isListed);
    SetAsideRow* heir = firstListed != content.entries.end() ? rows.at(firstListed - content.entries.begin()) : nullptr;
    if (heir != nullptr)
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (!content.entries[i].isListed)
                heir->button()->inheritFocus(*rows[i]->button());
    for (SetAsideRow* gone : rows_) {
        if (heir != nullptr)
            heir->button()->inheritFocus(*gone->button());
        gone->deleteLater();
        gone->hide();
    }
    rows_ = std::move(rows);
    QWidget* previous = heading_->findChild<HelpIcon*>();
    for (SetAsideRow* row : rows_) {
        rowColumn_->removeWidget(row);
        rowColumn_->addWidget(row);
        row->show();
        setTabOrder(previous, row->button());
        setTabOrder(row->button(), row->help());
        previous = row->help();
    }
}

SetAsideRow* SetAsideView::takeRow(const Text& id)
{
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const SetAsideRow* row) { return row->id() == id; });
    if (found != rows_.end()) {
        SetAsideRow* row = *found;
        rows_.erase(found);
        return row;
    }
    auto* row = new SetAsideRow(id, this);
    connect(row, &SetAsideRow::acknowledged, this, &SetAsideView::acknowledged);
    return row;
}

}  // namespace quenchly
