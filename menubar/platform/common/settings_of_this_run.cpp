#include "settings_of_this_run.h"

#include <map>

namespace quenchly {
namespace {

class LoginItemOfThisRun final : public LoginItem {
public:
    Status status() const override { return registered_ ? Status::enabled : Status::notRegistered; }
    std::string registerItem() override
    {
        registered_ = true;
        return {};
    }
    std::string unregisterItem() override
    {
        registered_ = false;
        return {};
    }
    void requestApproval() override {}

private:
    bool registered_ = false;
};

class UserDefaultsOfThisRun final : public UserDefaults {
public:
    bool contains(const std::string& key) const override { return values_.count(key) != 0; }
    void setBool(const std::string& key, bool value) override { values_[key] = value; }

private:
    std::map<std::string, bool> values_;
};

}  // namespace

std::unique_ptr<LoginItem> makeLoginItemOfThisRun()
{
    return std::make_unique<LoginItemOfThisRun>();
}

std::unique_ptr<UserDefaults> makeUserDefaultsOfThisRun()
{
    return std::make_unique<UserDefaultsOfThisRun>();
}

}  // namespace quenchly
