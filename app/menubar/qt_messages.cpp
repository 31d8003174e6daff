#include "qt_messages.h"

#include <QString>
#include <QtGlobal>

namespace quenchly {
namespace {

QtMessageHandler handlerBefore = nullptr;

void passOnOthers(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!message.startsWith(QLatin1String("QStandardPaths: ")))
        handlerBefore(type, context, message);
}

}  // namespace

void silenceRuntimeFolderWarnings()
{
    handlerBefore = qInstallMessageHandler(passOnOthers);
}

}  // namespace quenchly
