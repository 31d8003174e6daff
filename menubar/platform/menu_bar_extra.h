#pragma once

#include <QImage>
#include <QObject>
#include <QPoint>
#include <QString>
#include <memory>
#include <vector>

namespace quenchly {

/// What the item in the menu bar shows. All texts are plain single lines.
struct MenuBarExtraContent {
    /// The glyph, one image for each scale, smallest first; each image's device pixel ratio says its scale.
    std::vector<QImage> images;
    QString label;
    /// How the label begins; where the host can style text, these words stand out from the rest.
    QString statusWord;
    /// A second line for hosts that show a tooltip; the label is the tooltip's first.
    QString explanation;

    bool operator==(const MenuBarExtraContent&) const = default;
};

/// The item in the menu bar (macOS) or in the tray (Linux).
class MenuBarExtra : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Shows `content`; only what differs from the last call reaches the system.
    virtual void setContent(const MenuBarExtraContent& content) = 0;

    /// Whether a place exists in which a person can see the item. False until the first `availabilityChanged`.
    virtual bool isAvailable() const = 0;

Q_SIGNALS:
    /// The item was pressed (by pointer, keyboard or accessibility). `position` is where, in screen coordinates, null
    /// when the system does not tell; `activationToken` lets a window opened now take the focus, empty when there is
    /// none.
    void activated(QPoint position, const QString& activationToken);

    /// Emitted once when the system has told whether there is a place for the item, always after `makeMenuBarExtra` has
    /// returned, and then on each change. A tray that restarts within a few seconds is no change.
    void availabilityChanged(bool available);
};

/// The item of the running system. Needs a QApplication.
std::unique_ptr<MenuBarExtra> makeMenuBarExtra();

}  // namespace quenchly
