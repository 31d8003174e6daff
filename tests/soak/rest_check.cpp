#include "rest_check.h"

#include <QApplication>
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace quenchly::soak {
namespace {

/// What may be allocated more than at the first look: the process tables remember what other programs started, and a
/// text that was not shown before can bring a typeface along.
constexpr std::int64_t moreLiveBytes = 1536 * 1024;

/// What the heap may keep for itself between what lives: twice the most that was seen in many soaks.
constexpr std::int64_t morePrivateBytes = 8 * 1024 * 1024;

constexpr std::size_t mostWords = 10;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool countsMemory = false;
#else
constexpr bool countsMemory = true;
#endif

/// A thread of Qt has one for its events. Qt's own helpers end when they have had nothing to do for half a minute.
constexpr const char* wakeUpCall = "anon_inode:[eventfd]";

struct Sorted {
    std::vector<std::string> others;
    std::ptrdiff_t wakeUpCalls = 0;
};

Sorted sorted(std::vector<std::string> descriptors)
{
    const auto wakeUpCalls = static_cast<std::ptrdiff_t>(std::erase(descriptors, wakeUpCall));
    return {std::move(descriptors), wakeUpCalls};
}

double mebibytes(std::int64_t bytes)
{
    return static_cast<double>(bytes) / (1024 * 1024);
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += "\n    " + line;
    return text;
}

}  // namespace

void RestCheck::fail(const std::string& finding)
{
    ++failures_;
    std::printf("FAILED: %s\n", finding.c_str());
    std::fflush(stdout);
}

bool RestCheck::isAtRest() const
{
    const pid_t ours = rewriter_.process();
    const auto children = ownChildren();
    const bool onlyOurs = std::ranges::all_of(children, [&](const OwnChild& child) { return child.process == ours; });
    if (!onlyOurs || application_.isBusy() || application_.showsPanel())
        return false;
    if (!first_)
        return true;
    // A scan that an opening began may still be reading.
    const OwnFacts facts = ownFacts();
    return facts.threads <= first_->threads && facts.descriptors.size() <= first_->descriptors.size();
}

void RestCheck::rest()
{
    const bool rests = SoakedApplication::letHappenUntil([this] {
        if (application_.showsPanel())
            application_.press();
        for (const OwnChild& child : ownChildren())
            if (child.process != rewriter_.process())
                killOwnChild(child.process);
        return isAtRest();
    });
    if (rests)
        return;
    for (const OwnChild& child : ownChildren())
        if (child.isZombie)
            fail("a child of the application is a zombie");
    fail("the application does not come to rest: " + std::to_string(ownChildren().size()) + " children, " +
         std::to_string(ownFacts().threads) + " threads");
}

void RestCheck::look(int done)
{
    rest();
    const OwnFacts facts = ownFacts();
    const auto words = application_.words().all();
    std::printf("  %8d %12.2f MiB %10.1f MiB %12zu %8d %8d %8zu\n", done, mebibytes(facts.liveBytes),
                mebibytes(facts.privateBytes), facts.descriptors.size(), facts.threads,
                static_cast<int>(QApplication::allWidgets().size()), words.size());
    std::fflush(stdout);
    if (first_)
        compare(facts);
    else
        widgetsAtFirst_ = static_cast<int>(QApplication::allWidgets().size());
    if (!first_)
        first_ = facts;
    if (words.size() > mostWords && wordsTold_ <= mostWords)
        fail("a flood of messages:" + joined({words.begin(), words.begin() + mostWords}));
    else if (words.size() <= mostWords)
        for (std::size_t place = wordsTold_; place < words.size(); ++place)
            std::printf("  said: %s\n", words[place].c_str());
    wordsTold_ = words.size();
}

void RestCheck::compare(const OwnFacts& facts)
{
    const Sorted now = sorted(facts.descriptors);
    const Sorted before = sorted(first_->descriptors);
    if (now.others != before.others || now.wakeUpCalls > before.wakeUpCalls)
        fail("descriptors now:" + joined(facts.descriptors) + "\n  and at first:" + joined(first_->descriptors));
    if (static_cast<int>(QApplication::allWidgets().size()) != widgetsAtFirst_)
        fail("widgets were left: " + std::to_string(QApplication::allWidgets().size()) + ", and at first " +
             std::to_string(widgetsAtFirst_));
    if (countsMemory && facts.liveBytes > first_->liveBytes + moreLiveBytes)
        fail("what is allocated has grown");
    if (countsMemory && facts.privateBytes > first_->privateBytes + morePrivateBytes)
        fail("private memory has grown");
}

}  // namespace quenchly::soak
