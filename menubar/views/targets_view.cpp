#include "targets_view.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "help_icon.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "section_heading.h"
#include "text_label.h"
#include "wind_palette.h"

namespace quenchly {
namespace {

using namespace PanelMetrics;

constexpr int paddingV = 10;
constexpr int betweenDotAndName = 8;
constexpr int betweenNameAndDetail = 12;
constexpr int rowPadding = 3;
constexpr double noteOpacity = 0.8;
constexpr int mostNoteLines = 4;

QColor targetColor(TargetRow::State state)
{
    switch (state) {
        case TargetRow::State::paused:
            return PanelColors::opaque(WindPalette::amber);
        case TargetRow::State::running:
            return PanelColors::opaque(WindPalette::teal);
        case TargetRow::State::unknown:
            break;
    }
    return PanelColors::opaque(WindPalette::muted);
}

TextStyle noteStyle(int mostLines)
{
    return {.pixelSize = footerSize,
            .ink = PanelColors::faded(PanelColors::inkMuted, noteOpacity),
            .mostLines = mostLines,
            .lineHeight = 1.4};
}

}  // namespace

class TargetRowView : public QWidget {
public:
    explicit TargetRowView(QWidget* parent) : QWidget(parent)
    {
        name_ = new TextLabel({.pixelSize = bodySize, .ink = PanelColors::inkText}, this);
        detail_ = new TextLabel({.pixelSize = secondarySize, .ink = PanelColors::inkMuted}, this);
        detail_->setAlignment(Qt::AlignRight);
        detail_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);  // a long name gives way
        alignBaselines({name_, detail_}, name_->sizeHint().height());
        auto* line = new QHBoxLayout(this);
        line->setContentsMargins(targetDot + betweenDotAndName, rowPadding, 0, rowPadding);
        line->setSpacing(betweenNameAndDetail);
        line->addWidget(name_);
        line->addStretch(1);
        line->addWidget(detail_);
    }

    void setContent(const MenuContent::Target& target)
    {
        name_->showText(target.name);
        detail_->showText(target.detail);
        if (dot_ == targetColor(target.state))
            return;
        dot_ = targetColor(target.state);
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(dot_);
        painter.drawEllipse(QRectF(0, (height() - targetDot) / 2.0, targetDot, targetDot));
    }

private:
    TextLabel* name_;
    TextLabel* detail_;
    QColor dot_;
};

TargetsView::TargetsView(QWidget* parent) : QWidget(parent)
{
    heading_ = new SectionHeading(PanelColors::inkMuted, this);
    rowColumn_ = new QVBoxLayout;
    rowColumn_->setSpacing(0);
    more_ = new TextLabel({.pixelSize = secondarySize, .ink = PanelColors::inkMuted}, this);
    note_ = new TextLabel(noteStyle(mostNoteLines), this);
    honesty_ = new TextLabel(noteStyle(1), this);
    keepPlaceWhenHidden(*honesty_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, paddingV, margin, paddingV);
    column->setSpacing(4);
    column->addWidget(heading_);
    column->addLayout(rowColumn_);
    column->addWidget(more_);
    column->addWidget(note_);
    column->addWidget(honesty_);
}

void TargetsView::setContent(const MenuContent::Targets& content)
{
    heading_->setContent(content.heading, content.help);
    showRows(content.rows);
    more_->showText(content.moreRows > 0 ? "+" + std::to_string(content.moreRows) : "");
    note_->showText(content.note);
    honesty_->showText(content.honesty);
}

void TargetsView::showRows(const std::vector<MenuContent::Target>& targets)
{
    while (rows_.size() < targets.size()) {
        rows_.push_back(new TargetRowView(this));
        rowColumn_->addWidget(rows_.back());
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (i < targets.size())
            rows_[i]->setContent(targets[i]);
        rows_[i]->setVisible(i < targets.size());
    }
}

}  // namespace quenchly
