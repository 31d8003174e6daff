#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
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

/// The processes that a target scan finds, by their names, with their states; shared with the scanning thread.
class ScriptedTargets {
public:
    void set(std::map<std::string, std::string> states)
    {
        const std::scoped_lock lock(mutex_);
        states_ = std::move(states);
    }
    std::map<std::string, std::string> states() const
    {
        const std::scoped_lock lock(mutex_);
        return states_;
    }
    std::atomic<int> scans = 0;

private:
    mutable std::mutex mutex_;
    std::map<std::string, std::string> states_;
};

class ScriptedLoginItem final : public LoginItem {
public:
    Status now = Status::notRegistered;
    std::string refusal;  ///< not empty: registering and unregistering fail with it
    bool needsApproval = false;
    int registrations = 0;
    int removals = 0;
    int approvalRequests = 0;

    Status status() const override { return now; }
    std::string registerItem() override
    {
        ++registrations;
        if (refusal.empty())
            now = needsApproval ? Status::requiresApproval : Status::enabled;
        return refusal;
    }
    std::string unregisterItem() override
    {
        ++removals;
        if (refusal.empty())
            now = Status::notRegistered;
        return refusal;
    }
    void requestApproval() override { ++approvalRequests; }
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

/// What the user sees of the program apart from its own windows, and the user's answers.
class ScriptedDesktop {
public:
    /// Everything in the order in which it happened: "regular", "activate", "accessory", "terminate", "alert TITLE",
    /// "copy TEXT", "trash ITEM".
    std::vector<std::string> events;
    std::vector<Alert> alerts;
    /// One for each alert, none to dismiss it. Further alerts are dismissed.
    std::deque<std::optional<std::size_t>> answers;
    /// Called while an alert is shown.
    std::function<void(const Alert&)> duringAlert;
    std::string trashRefusal;
    std::vector<std::chrono::milliseconds> delays;
    std::vector<std::function<void()>> tasks;

    std::optional<std::size_t> answer(const Alert& alert);
};

class ScriptedApplication final : public RunningApplication {
public:
    explicit ScriptedApplication(ScriptedDesktop& desktop) : desktop_(desktop) {}

    void setActivationPolicy(ActivationPolicy policy) override
    {
        desktop_.events.push_back(policy == ActivationPolicy::regular ? "regular" : "accessory");
    }
    void activate() override { desktop_.events.push_back("activate"); }
    void terminate() override { desktop_.events.push_back("terminate"); }

private:
    ScriptedDesktop& desktop_;
};

/// A system whose home folder is a fresh scratch folder with installed background checks, and whose clock, processes,
/// figures, login item, defaults and desktop are scripted.
struct ScriptedSystem {
    ScratchFolder scratch;
    Instant now;
    std::optional<LastMetrics> sample;
    std::vector<bool> sampledWith;
    std::vector<std::string> log;
    std::shared_ptr<ScriptedProcesses> processes = std::make_shared<ScriptedProcesses>();
    std::shared_ptr<ScriptedTargets> targets = std::make_shared<ScriptedTargets>();
    std::shared_ptr<ScriptedLoginItem> loginItem = std::make_shared<ScriptedLoginItem>();
    std::shared_ptr<ScriptedDefaults> defaults = std::make_shared<ScriptedDefaults>();
    std::shared_ptr<OpenedAddresses> opened = std::make_shared<OpenedAddresses>();
    ScriptedDesktop desktop;

    ScriptedSystem();

    std::filesystem::path home() const;
    std::filesystem::path dataHome() const;
    std::filesystem::path agentFile() const;
    /// Writes into the "state" folder of the default data folder.
    void writeState(const std::string& name, const std::string& content) const;

    /// Borrows this object: it must outlive what is built from the result.
    System system();

private:
    void addDesktop(System& system);
};

}  // namespace quenchly::testing
