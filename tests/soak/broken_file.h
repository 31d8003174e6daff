#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "dice.h"

namespace quenchly::soak {

/// One file that is written in every way in which a checker, a person or a full disk can leave it.
class BrokenFile {
public:
    explicit BrokenFile(std::filesystem::path path) : path_(std::move(path)) {}

    /// Changes the file, as the dice say: moves `text` whole into place, writes its first half (the second follows with
    /// the next call), cuts it, empties it, deletes it, puts a folder, a pipe, a link to nothing or far too much in its
    /// place, or takes the right to read it. Without a text the file is to be missing.
    void change(Dice& dice, const std::optional<std::string>& text);

    /// Leaves exactly `text` there, or nothing.
    void makeWhole(const std::optional<std::string>& text);

private:
    void clear() const;
    void write(const std::string& text) const;
    void moveIntoPlace(const std::string& text) const;
    void writeSecondHalf();
    void writeFirstHalf(Dice& dice, const std::string& text);

    std::filesystem::path path_;
    std::optional<std::string> secondHalf_;
};

}  // namespace quenchly::soak
