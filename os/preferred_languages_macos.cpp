#include <CoreFoundation/CoreFoundation.h>

#include <array>

#include "preferred_languages.h"

namespace quenchly {
namespace {

/// A language tag; empty when it is longer than any that we know.
std::string utf8(CFStringRef tag)
{
    std::array<char, 256> buffer{};
    if (!CFStringGetCString(tag, buffer.data(), static_cast<CFIndex>(buffer.size()), kCFStringEncodingUTF8))
        return {};
    return buffer.data();
}

}  // namespace

std::vector<std::string> preferredLanguages()
{
    std::vector<std::string> languages;
    const CFArrayRef tags = CFLocaleCopyPreferredLanguages();
    if (tags == nullptr)
        return languages;
    const CFIndex count = CFArrayGetCount(tags);
    for (CFIndex i = 0; i < count; ++i)
        languages.push_back(utf8(static_cast<CFStringRef>(CFArrayGetValueAtIndex(tags, i))));
    CFRelease(tags);
    return languages;
}

}  // namespace quenchly
