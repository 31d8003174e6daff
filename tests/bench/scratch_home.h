#pragma once

#include <QTemporaryDir>
#include <filesystem>
#include <string>

namespace quenchly::bench {

/// A home folder as the stand-in checker leaves it.
class ScratchHome {
public:
    /// The program ends when the scenario cannot be played.
    explicit ScratchHome(const char* scenario);

    std::filesystem::path path() const { return folder_.path().toStdString(); }

    /// As the checker writes: a new file with the same bytes is moved over the old one.
    void replaceStateFile() const;

private:
    std::filesystem::path dataHome() const { return path() / "Library/Application Support/Quenchly"; }
    std::filesystem::path stateFile() const { return dataHome() / "state/heat-state.json"; }

    QTemporaryDir folder_;
    std::string state_;
};

}  // namespace quenchly::bench
