#pragma once

#include <unistd.h>

#include <string>
#include <vector>

#ifdef __APPLE__
extern char** environ;
#endif

namespace quenchly::testing {

using Words = std::vector<std::string>;

/// Words as a new process is given them; they have to outlive the result.
inline std::vector<char*> pointersTo(Words& words)
{
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// This process's environment, so that a sanitizer's options reach a child, without what the stand-in checker reads.
inline Words environmentWithoutOurs()
{
    Words result;
    for (char** entry = environ; *entry != nullptr; ++entry)
        if (!std::string(*entry).starts_with("QUENCHLY_"))
            result.emplace_back(*entry);
    return result;
}

}  // namespace quenchly::testing
