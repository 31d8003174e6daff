#include "pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace quenchly {

void copyToPasteboard(const std::string& text)
{
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

}  // namespace quenchly
