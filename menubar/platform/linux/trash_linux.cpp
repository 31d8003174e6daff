#include "trash.h"

#include <QFile>

namespace quenchly {

void moveToTrash(const std::filesystem::path& item, const TrashCompletion& completion)
{
    QFile file(QString::fromStdString(item.string()));
    completion(file.moveToTrash() ? std::string() : file.errorString().toStdString());
}

}  // namespace quenchly
