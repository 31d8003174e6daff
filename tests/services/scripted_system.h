#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "system.h"
#include "test_files.h"

namespace quenchly::testing {

/// A process table that says what it is told.
class ScriptedProcesses final : public ProcessTable {
public:
    std::set<std::string> matchedPatterns;
    std::vector<std::string> asked;

    void beginRefresh() override {}
    std::vector<ProcessId> named(const std::string&) override { return {}; }
    std::vector<ProcessId> matching(const std::string& pattern) override
    {
        asked.push_back(pattern);
        return matchedPatterns.count(pattern) != 0 ? std::vector<ProcessId>{4711} : std::vector<ProcessId>{};
    }
    std::map<ProcessId, std::string> states(const std::vector<ProcessId>&) override { return {}; }
};

class ScriptedLoginItem final : public LoginItem {
public:
    Status now = Status::notRegistered;
    std::string refusal;  ///< not empty: registering and unregistering fail with it
    int registrations = 0;
    int removals = 0;

    Status status() const override { return now; }
    std::string registerItem() override
    {
        ++registrations;
        if (refusal.empty())
            now = Status::enabled;
        return refusal;
    }
    std::string unregisterItem() override
    {
        ++removals;
        if (refusal.empty())
            now = Status::notRegistered;
        return refusal;
    }
};

class ScriptedDefaults final : public UserDefaults {
public:
    std::map<std::string, bool> values;

    bool contains(const std::string& key) const override { return values.count(key) != 0; }
    void setBool(const std::string& key, bool value) override { values[key] = value; }
};

/// The web addresses that were opened, from whatever thread.
class OpenedAddresses {
public:
    void add(const std::string& address)
    {
        const std::scoped_lock lock(mutex_);
        addresses_.push_back(address);
    }
    std::vector<std::string> all() const
    {
        const std::scoped_lock lock(mutex_);
        return addresses_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> addresses_;
};

/// A system whose home folder is a fresh scratch folder with installed background checks, and whose clock, processes,
/// figures, login item and defaults are scripted.
struct ScriptedSystem {
    ScratchFolder scratch;
    Instant now;
    std::optional<LastMetrics> sample;
    std::vector<bool> sampledWith;
    std::vector<std::string> log;
    std::shared_ptr<ScriptedProcesses> processes = std::make_shared<ScriptedProcesses>();
    std::shared_ptr<ScriptedLoginItem> loginItem = std::make_shared<ScriptedLoginItem>();
    std::shared_ptr<ScriptedDefaults> defaults = std::make_shared<ScriptedDefaults>();
    std::shared_ptr<OpenedAddresses> opened = std::make_shared<OpenedAddresses>();

    ScriptedSystem();

    std::filesystem::path home() const;
    std::filesystem::path dataHome() const;
    std::filesystem::path agentFile() const;
    /// Writes into the "state" folder of the default data folder.
    void writeState(const std::string& name, const std::string& content) const;

    /// Borrows this object: it must outlive what is built from the result.
    System system();
};

}  // namespace quenchly::testing
