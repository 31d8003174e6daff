#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "process_table.h"

namespace quenchly {

/// A running copy of the sleeper program; killed and reaped with this object.
class Child {
public:
    Child(const std::filesystem::path& program, const std::vector<std::string>& arguments);

    /// Forks a process that calls exec only when `letExec` is called.
    static std::unique_ptr<Child> heldBeforeExec(const std::filesystem::path& program,
                                                 const std::vector<std::string>& arguments);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    ProcessId id() const { return id_; }
    void letExec();
    void exec(const std::vector<std::string>& arguments);
    void rename(const std::string& name);
    void stop();
    void becomeZombie();
    void end();

private:
    Child() = default;
    void fork(const std::filesystem::path& program, std::vector<std::string> arguments, bool waits);
    [[noreturn]] static void run(const std::filesystem::path& program, std::vector<std::string>& arguments);
    void command(const std::string& line);
    void awaitReady();

    pid_t id_ = 0;
    int input_ = -1;
    int ready_ = -1;
};

/// Real processes in a fresh folder, and a folder laid out as `/proc` for what no real process shows.
class ProcessFixture : public testing::Test {
protected:
    ProcessFixture();
    ~ProcessFixture() override;

    std::filesystem::path program(const std::string& name) const;
    std::filesystem::path script(const std::string& name) const;
    Child& start(const std::string& name, const std::vector<std::string>& arguments = {});
    Child& startHeld(const std::string& name, const std::vector<std::string>& arguments);

    std::filesystem::path fakeRoot() const { return folder_ / "proc"; }
    void fakeProcess(const std::string& id, const std::string& commandLine, const std::string& comm = "fake") const;
    void fakeSelf(ProcessId id) const;
    void showInFakeRoot(ProcessId id) const;

    /// Those of the ids that belong to processes started here.
    std::vector<ProcessId> own(const std::vector<ProcessId>& ids) const;
    /// What a command of the system prints, one id a line, those of processes started here.
    std::vector<ProcessId> ownPrinted(const std::vector<std::string>& command) const;
    static std::string output(const std::vector<std::string>& command);

private:
    std::filesystem::path folder_;
    std::vector<std::unique_ptr<Child>> children_;
};

}  // namespace quenchly
