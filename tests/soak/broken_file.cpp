#include "broken_file.h"

#include <sys/stat.h>

#include <cstdint>
#include <fstream>
#include <system_error>

namespace quenchly::soak {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t farTooMuch = std::uintmax_t{3} * 1024 * 1024;

enum class Way {
    wholeMoved,
    firstHalf,
    cut,
    empty,
    missing,
    folder,
    pipe,
    linkToNothing,
    unreadable,
    noJson,
    tooLarge
};

/// The usual ways come more often than the odd ones.
constexpr Way ways[] = {Way::wholeMoved, Way::wholeMoved, Way::wholeMoved,    Way::firstHalf,  Way::firstHalf,
                        Way::cut,        Way::empty,      Way::missing,       Way::folder,     Way::pipe,
                        Way::unreadable, Way::noJson,     Way::linkToNothing, Way::unreadable, Way::tooLarge};

std::string noise(Dice& dice)
{
    std::string bytes(dice.below(200), '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(dice.below(256));
    return dice.oneIn(3) ? "[" + bytes : bytes;
}

}  // namespace

void BrokenFile::clear() const
{
    std::error_code ignored;
    if (fs::is_directory(fs::symlink_status(path_, ignored)))
        ::chmod(path_.c_str(), 0700);
    fs::remove_all(path_, ignored);
}

void BrokenFile::write(const std::string& text) const
{
    std::ofstream(path_, std::ios::binary | std::ios::trunc) << text;
}

void BrokenFile::moveIntoPlace(const std::string& text) const
{
    std::error_code ignored;
    if (fs::is_directory(fs::symlink_status(path_, ignored)))
        clear();
    const fs::path fresh = path_.string() + ".fresh";
    std::ofstream(fresh, std::ios::binary | std::ios::trunc) << text;
    fs::rename(fresh, path_, ignored);
}

void BrokenFile::writeFirstHalf(Dice& dice, const std::string& text)
{
    const std::size_t half = dice.below(text.size() + 1);
    clear();
    write(text.substr(0, half));
    secondHalf_ = text.substr(half);
}

void BrokenFile::writeSecondHalf()
{
    std::error_code ignored;
    if (fs::is_regular_file(fs::symlink_status(path_, ignored)))
        std::ofstream(path_, std::ios::binary | std::ios::app) << *secondHalf_;
    secondHalf_.reset();
}

void BrokenFile::change(Dice& dice, const std::optional<std::string>& text)
{
    std::error_code ignored;
    fs::create_directories(path_.parent_path(), ignored);
    if (secondHalf_)
        return writeSecondHalf();
    const Way way = text ? dice.oneOf(ways) : Way::missing;
    if (way == Way::wholeMoved)
        return moveIntoPlace(*text);
    if (way == Way::firstHalf)
        return writeFirstHalf(dice, *text);
    clear();
    switch (way) {
        case Way::wholeMoved:
        case Way::firstHalf:
        case Way::missing:
            return;
        case Way::cut:
            return write(text->substr(0, dice.below(text->size() + 1)));
        case Way::empty:
            return write({});
        case Way::folder:
            fs::create_directories(dice.oneIn(2) ? path_ / "something" : path_, ignored);
            return;
        case Way::pipe:
            ::mkfifo(path_.c_str(), 0600);
            return;
        case Way::linkToNothing:
            return fs::create_symlink("nowhere", path_, ignored);
        case Way::unreadable:
            write(*text);
            ::chmod(path_.c_str(), 0);
            return;
        case Way::noJson:
            return write(noise(dice));
        case Way::tooLarge:
            write(*text);
            fs::resize_file(path_, farTooMuch, ignored);
            return;
    }
}

void BrokenFile::makeWhole(const std::optional<std::string>& text)
{
    secondHalf_.reset();
    clear();
    if (!text)
        return;
    fs::create_directories(path_.parent_path());
    moveIntoPlace(*text);
}

}  // namespace quenchly::soak
