#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "own_facts.h"
#include "rewriter.h"
#include "soaked_application.h"

namespace quenchly::soak {

/// Looks at the application whenever it is at rest in the same situation, and holds it against the first such time.
class RestCheck {
public:
    RestCheck(SoakedApplication& application, const Rewriter& rewriter) : application_(application), rewriter_(rewriter)
    {
    }

    /// Closes the panel, kills the tools that run and waits until they are gone.
    void rest();

    /// Comes to rest, looks, and prints a row after `done` repetitions.
    void look(int done);

    /// What is wrong; told as it is found, and here counted.
    void fail(const std::string& finding);
    int failures() const { return failures_; }

private:
    bool isAtRest() const;
    void compare(const OwnFacts& facts);

    SoakedApplication& application_;
    const Rewriter& rewriter_;
    std::optional<OwnFacts> first_;
    int widgetsAtFirst_ = 0;
    std::size_t wordsTold_ = 0;
    int failures_ = 0;
};

}  // namespace quenchly::soak
