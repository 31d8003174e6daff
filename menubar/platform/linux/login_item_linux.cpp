#include <QFile>
#include <QSaveFile>
#include <system_error>

#include "login_item.h"

namespace quenchly {
namespace {

/// A program's path as the Exec key of a desktop entry takes it: quoted, and with the key's own "%" doubled.
QString execQuoted(const std::filesystem::path& executable)
{
    QString quoted;
    const QString path = QString::fromStdString(executable.string());
    for (const QChar c : path) {
        // The string type of the key takes one level of backslashes away before the quoting rule sees them.
        if (c == u'\\')
            quoted += QStringLiteral("\\\\\\\\");
        else if (c == u'"' || c == u'`' || c == u'$')
            quoted += QStringLiteral("\\\\") + c;
        else if (c == u'%')
            quoted += QStringLiteral("%%");
        else
            quoted += c;
    }
    return u'"' + quoted + u'"';
}

/// An entry in the desktop's autostart folder.
class AutostartEntry final : public LoginItem {
public:
    AutostartEntry(std::filesystem::path file, std::filesystem::path executable)
        : file_(std::move(file)), executable_(std::move(executable))
    {
    }

    Status status() const override
    {
        QFile file(fileName());
        if (!file.open(QIODevice::ReadOnly))
            return Status::notRegistered;
        const QByteArray text = file.readAll();
        const bool switchedOff = text.contains("\nHidden=true") || text.contains("\nX-GNOME-Autostart-enabled=false");
        return switchedOff ? Status::notRegistered : Status::enabled;
    }

    std::string registerItem() override
    {
        std::error_code error;
        std::filesystem::create_directories(file_.parent_path(), error);
        QSaveFile file(fileName());
        const QString entry = QStringLiteral(
                                  "[Desktop Entry]\nType=Application\nName=Quenchly\nExec=%1\nIcon=quenchly\n"
                                  "Terminal=false\nX-GNOME-Autostart-enabled=true\n")
                                  .arg(execQuoted(executable_));
        if (file.open(QIODevice::WriteOnly) && file.write(entry.toUtf8()) >= 0 && file.commit())
            return {};
        return file.errorString().toStdString();
    }

    std::string unregisterItem() override
    {
        std::error_code error;
        std::filesystem::remove(file_, error);
        return error ? error.message() : std::string();
    }

private:
    QString fileName() const { return QString::fromStdString(file_.string()); }

    std::filesystem::path file_;
    std::filesystem::path executable_;
};

}  // namespace

std::unique_ptr<LoginItem> makeLoginItem(const std::filesystem::path& settingsFolder,
                                         const std::filesystem::path& executable)
{
    return std::make_unique<AutostartEntry>(settingsFolder / "autostart" / "quenchly.desktop", executable);
}

}  // namespace quenchly
