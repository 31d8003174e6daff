#include "header_story.h"

#include <algorithm>
#include <array>

#include "lockup_row.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "text_label.h"
#include "verdict_story.h"

namespace quenchly {
namespace {

using namespace PanelMetrics;

constexpr int betweenLines = 4;
constexpr int mostHeadlineLines = 4;
constexpr int mostDetailLines = 2;

}  // namespace

HeaderStory::HeaderStory(int width, QWidget* parent) : QWidget(parent)
{
    setFixedWidth(width);
    headline_ = new TextLabel({.pixelSize = brandSize,
                               .weight = QFont::DemiBold,
                               .ink = PanelColors::inkText,
                               .mostLines = mostHeadlineLines,
                               .lineHeight = 1.25},
                              this);
    lockupRow_ = new LockupRow(width, this);
    detail_ = new TextLabel(
        {.pixelSize = secondarySize, .ink = PanelColors::inkMuted, .mostLines = mostDetailLines, .lineHeight = 1.35},
        this);
    headline_->showText(std::string(VerdictStoryLogic::holdingUntilPressureDrops));
    leastHeight_ = heightWith({.headline = mostHeadlineLines, .detail = 0});
}

void HeaderStory::setContent(const MenuContent::Header& content, Height height)
{
    headline_->showText(content.headline);
    lockupRow_->setContent(content);
    detail_->showText(content.detailIsNew ? content.detail : "");
    arrange(height);
    place();
    const bool isSaid = !detail_->isHidden() || content.detail == content.headline;
    headline_->setMore(isSaid ? "" : content.detail);
}

/// The headline goes first and comes last.
void HeaderStory::arrange(Height height)
{
    constexpr std::array<Lines, 6> choices{
        {{mostHeadlineLines, mostDetailLines}, {mostHeadlineLines, 1}, {mostHeadlineLines, 0}, {3, 0}, {2, 0}, {1, 0}}};
    if (height == Height::asNeeded)
        setFixedHeight(std::max(heightWith(choices.front()), leastHeight_));
    const auto fitting = std::find_if(choices.begin(), choices.end() - 1,
                                      [this](const Lines& lines) { return heightWith(lines) <= this->height(); });
    heightWith(*fitting);
    detail_->setVisible(fitting->detail > 0 && !detail_->text().isEmpty());
}

int HeaderStory::heightWith(const Lines& lines)
{
    headline_->setMostLines(lines.headline);
    const int withHeadline = headline_->heightForWidth(width()) + betweenLines + lockupRow_->height();
    if (lines.detail == 0 || detail_->text().isEmpty())
        return withHeadline;
    detail_->setMostLines(lines.detail);
    return withHeadline + betweenLines + detail_->heightForWidth(width());
}

void HeaderStory::place()
{
    headline_->setGeometry(0, 0, width(), headline_->heightForWidth(width()));
    lockupRow_->move(0, headline_->height() + betweenLines);
    detail_->setGeometry(0, lockupRow_->geometry().bottom() + 1 + betweenLines, width(),
                         detail_->heightForWidth(width()));
}

}  // namespace quenchly
