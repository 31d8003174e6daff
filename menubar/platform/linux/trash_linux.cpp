#include "trash.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QByteArray>
#include <QDateTime>
#include <cerrno>
#include <system_error>

#include "descriptor.h"

// By the desktop's rules, into the home folder's Trash. QFile::moveToTrash of Qt 6.4 never returns where it cannot
// write, takes the current directory where there is no Trash, and notes paths to which nothing can be put back.
namespace quenchly {
namespace {

namespace fs = std::filesystem;

/// A place in the Trash for one item.
struct Place {
    fs::path item;
    fs::path note;          ///< from which a file manager puts the item back
    std::error_code error;  ///< why there is no such place
};

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

/// What cannot be made shows when it is used.
fs::path preparedTrash(const fs::path& dataFolder)
{
    constexpr mode_t ownersAlone = 0700;
    std::error_code ignored;
    fs::create_directories(dataFolder, ignored);
    const fs::path trash = dataFolder / "Trash";
    for (const fs::path& folder : {trash, trash / "files", trash / "info"})
        mkdir(folder.c_str(), ownersAlone);
    return trash;
}

QByteArray noteOn(const fs::path& item)
{
    return "[Trash Info]\nPath=" + QByteArray::fromStdString(item.string()).toPercentEncoding("/") +
           "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toLatin1() + "\n";
}

std::error_code writeNew(const fs::path& file, const QByteArray& text)
{
    constexpr mode_t ownersAlone = 0600;
    const Descriptor descriptor(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ownersAlone));
    if (descriptor.number() < 0)
        return lastError();
    const auto written = write(descriptor.number(), text.constData(), text.size());
    if (written < 0)
        return lastError();
    return written == text.size() ? std::error_code() : std::make_error_code(std::errc::no_space_on_device);
}

/// Writes the note, whose name makes the place ours.
Place claimPlace(const fs::path& item, const fs::path& dataFolder)
{
    const fs::path trash = preparedTrash(dataFolder);
    Place place;
    for (int number = 1;; ++number) {
        const std::string name = item.filename().string() + (number == 1 ? "" : "." + std::to_string(number));
        place.item = trash / "files" / name;
        place.note = trash / "info" / (name + ".trashinfo");
        if (fs::exists(fs::symlink_status(place.item, place.error)))
            continue;
        place.error = writeNew(place.note, noteOn(item));
        if (place.error != std::errc::file_exists)
            return place;
    }
}

std::error_code move(const fs::path& item, const fs::path& to)
{
    std::error_code error;
    fs::rename(item, to, error);
    if (error != std::errc::cross_device_link)
        return error;
    if (fs::is_symlink(fs::symlink_status(item, error)))
        fs::copy_symlink(item, to, error);
    else
        fs::copy_file(item, to, error);
    if (!error && fs::remove(item, error))
        return {};
    std::error_code ignored;
    fs::remove(to, ignored);
    return error;
}

void moveToTrash(const fs::path& dataFolder, const fs::path& item, const TrashCompletion& completion)
{
    const Place place = claimPlace(item, dataFolder);
    const std::error_code error = place.error ? place.error : move(item, place.item);
    std::error_code ignored;
    if (error)
        fs::remove(place.note, ignored);
    completion(error ? error.message() : std::string());
}

}  // namespace

Trash makeTrash(const fs::path& dataFolder)
{
    return [dataFolder](const fs::path& item, const TrashCompletion& completion) {
        moveToTrash(dataFolder, item, completion);
    };
}

}  // namespace quenchly
