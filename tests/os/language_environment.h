#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quenchly::testing {

/// The environment variables that name languages are the test's own while it runs.
class LanguageEnvironment : public ::testing::Test {
protected:
    using Variables = std::vector<std::pair<const char*, const char*>>;

    void SetUp() override
    {
        for (const char* name : names) {
            const char* value = std::getenv(name);
            saved_.emplace_back(name, value == nullptr ? std::nullopt : std::optional<std::string>(value));
            unsetenv(name);
        }
    }

    void TearDown() override
    {
        for (const auto& [name, value] : saved_) {
            if (value)
                setenv(name, value->c_str(), 1);
            else
                unsetenv(name);
        }
    }

    /// These variables and no others.
    static void set(const Variables& variables)
    {
        for (const char* name : names)
            unsetenv(name);
        for (const auto& [name, value] : variables)
            setenv(name, value, 1);
    }

private:
    static constexpr std::array names{"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};
    std::vector<std::pair<const char*, std::optional<std::string>>> saved_;
};

}  // namespace quenchly::testing
