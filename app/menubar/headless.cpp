#include "headless.h"

#include <QBuffer>
#include <QDir>
#include <QPixmap>

#include "menu_bar_content.h"
#include "menu_bar_picture.h"
#include "menu_panel.h"
#include "panel_controller.h"
#include "status_json.h"
#include "updater.h"
#include "whole_file.h"

namespace quenchly {
namespace {

constexpr double scale = 2.0;

/// Answers that everything was applied long ago.
class SettledDefaults final : public UserDefaults {
public:
    bool contains(const std::string&) const override { return true; }
    void setBool(const std::string&, bool) override {}
};

QImage panelPicture(StateWatcher& watcher)
{
    Updater updater(watcher.system());
    PanelController controller(watcher, updater);
    controller.scanNow();
    MenuPanel panel(controller, MenuPanel::Role::popup);
    panel.showWhole();
    return panel.grab().toImage();
}

bool write(const QString& path, const QByteArray& bytes)
{
    return writeWholeFile(path.toStdString(), bytes).empty();
}

bool write(const QString& path, const QImage& picture)
{
    QBuffer buffer;
    return picture.save(&buffer, "PNG") && write(path, buffer.data());
}

}  // namespace

System withoutSideEffects(System system)
{
    system.userDefaults = std::make_shared<SettledDefaults>();
    system.startUpdaterBackend = [] { return std::unique_ptr<UpdaterBackend>(); };
    system.log = [](const std::string&) {};
    return system;
}

QString renderHeadless(StateWatcher& watcher, const QString& folder)
{
    const QDir directory(folder);
    const QByteArray json = QByteArray::fromStdString(statusJson(watcher.status()) + "\n");
    const bool written =
        directory.mkpath(QStringLiteral(".")) &&
        write(directory.filePath(QStringLiteral("menu-bar.png")), menuBarPicture(menuBarContent(watcher), scale)) &&
        write(directory.filePath(QStringLiteral("panel.png")), panelPicture(watcher)) &&
        write(directory.filePath(QStringLiteral("status.json")), json);
    return written ? QString() : QStringLiteral("cannot write into %1").arg(folder);
}

}  // namespace quenchly
