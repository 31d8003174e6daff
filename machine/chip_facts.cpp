#include "chip_facts.h"

#include "text.h"
#include "tool_output.h"

namespace quenchly::ChipLabel {

std::string shell(const std::string& commandLine)
{
    const auto result = runTool({"/bin/sh", "-c", commandLine});
    return result && isValidUtf8(result->standardOutput) ? std::string(trimmed(result->standardOutput)) : std::string();
}

std::string machine()
{
    return label(facts());
}

}  // namespace quenchly::ChipLabel
