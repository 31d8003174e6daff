// Usage: bare_qt FILE
// The least that a Qt program can be which reads one JSON file a second.

#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <QWidget>
#include <chrono>

int main(int argc, char** argv)
{
    using namespace std::chrono_literals;
    const QApplication application(argc, argv);
    const QString path = QApplication::arguments().value(1);
    QWidget window;
    window.winId();

    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&] {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            window.setWindowTitle(
                QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("lastCheck")).toString());
    });
    timer.start(1s);
    return QApplication::exec();
}
