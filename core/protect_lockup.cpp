#include "protect_lockup.h"

#include "l10n.h"

namespace quenchly::ProtectLockup {
namespace {

std::string lockup(const Facts& facts, std::string_view onKey)
{
    if (!facts.agentInstalled)
        return L10n::t(checksNotSetUp);
    if (!facts.protectOn)
        return L10n::t(protectionOff);
    return L10n::t(onKey);
}

}  // namespace

std::string extra(const Facts& facts)
{
    return lockup(facts, extraOn);
}

std::string panel(const Facts& facts)
{
    return lockup(facts, protectionOn);
}

std::optional<std::string> retainingMemoryFact(const Facts& facts)
{
    if (facts.protectOn && facts.agentInstalled)
        return L10n::t(retainingMemoryOn);
    return std::nullopt;
}

}  // namespace quenchly::ProtectLockup
