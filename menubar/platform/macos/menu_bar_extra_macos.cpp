#include <QBuffer>

#include "menu_bar_extra.h"
#include "status_item_macos.h"

namespace quenchly {
namespace {

std::string pngFile(const QImage& image)
{
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return file.toStdString();
}

StatusItemImage statusItemImage(const std::vector<QImage>& images)
{
    StatusItemImage result;
    if (images.empty())
        return result;
    const QSizeF size = images.front().deviceIndependentSize();
    result.widthInPoints = size.width();
    result.heightInPoints = size.height();
    for (const QImage& image : images)
        result.pngFiles.push_back(pngFile(image));
    return result;
}

QString toolTip(const MenuBarExtraContent& content)
{
    return content.explanation.isEmpty() ? content.label : content.label + u'\n' + content.explanation;
}

class MenuBarExtraMacos final : public MenuBarExtra {
public:
    MenuBarExtraMacos() : item_([this](std::optional<ScreenPoint> corner) { announcePress(corner); })
    {
        QMetaObject::invokeMethod(
            this, [this] { announceAvailability(); }, Qt::QueuedConnection);
    }

    void setContent(const MenuBarExtraContent& content) override
    {
        if (content.images != shown_.images)
            item_.setImage(statusItemImage(content.images));
        if (content.label != shown_.label || content.statusWord != shown_.statusWord) {
            const QString rest = content.label.mid(content.statusWord.size());
            item_.setTitle({.bold = content.statusWord.toStdString(), .semibold = rest.toStdString()});
            item_.setAccessibilityLabel(content.label.toStdString());
        }
        if (toolTip(content) != toolTip(shown_))
            item_.setToolTip(toolTip(content).toStdString());
        shown_ = content;
    }

    bool isAvailable() const override { return available_; }

private:
    void announcePress(std::optional<ScreenPoint> corner)
    {
        Q_EMIT activated(corner ? QPointF(corner->x, corner->y).toPoint() : QPoint(), QString());
    }

    void announceAvailability()
    {
        available_ = true;
        Q_EMIT availabilityChanged(true);
    }

    StatusItem item_;
    MenuBarExtraContent shown_;
    bool available_ = false;
};

}  // namespace

std::unique_ptr<MenuBarExtra> makeMenuBarExtra()
{
    return std::make_unique<MenuBarExtraMacos>();
}

}  // namespace quenchly
