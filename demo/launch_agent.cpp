#include "launch_agent.h"

#include "checker_contract.h"
#include "markup.h"

namespace quenchly::demo {

std::filesystem::path launchAgentPath(const std::filesystem::path& launchAgents)
{
    return launchAgents / CheckerContract::agentFile;
}

FileWrite launchAgent(const std::filesystem::path& launchAgents, const std::string& tool,
                      const std::filesystem::path& dataHome)
{
    std::string text = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
    <key>Label</key>
    <string>)" + std::string(CheckerContract::agentLabel) +
                       R"(</string>
    <key>ProgramArguments</key>
    <array>
        <string>)" + escaped(tool) +
                       R"(</string>
        <string>check</string>
    </array>
    <key>EnvironmentVariables</key>
    <dict>
        <key>QUENCHLY_HOME</key>
        <string>)" + escaped(dataHome.string()) +
                       R"(</string>
    </dict>
    <key>RunAtLoad</key>
    <true/>
    <key>StartInterval</key>
    <integer>60</integer>
</dict>
</plist>
)";
    return {.path = launchAgentPath(launchAgents), .text = std::move(text)};
}

}  // namespace quenchly::demo
