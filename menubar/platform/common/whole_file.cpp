#include "whole_file.h"

#include <QSaveFile>

namespace quenchly {

// Without the flush, the last bytes are written only by commit(), which does not look whether they were: on a full disk
// it would put an empty file in the place of the good one, and say that all is well (Qt 6.4).
std::string writeWholeFile(const std::filesystem::path& path, const QByteArray& bytes)
{
    QSaveFile file(QString::fromStdString(path.string()));
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() && file.commit())
        return {};
    const std::string error = file.errorString().toStdString();
    file.cancelWriting();
    return error;
}

}  // namespace quenchly
