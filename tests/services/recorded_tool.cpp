#include "recorded_tool.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <system_error>
#include <thread>

#include "patience.h"

namespace quenchly::testing {

using namespace std::chrono_literals;

bool eventually(const std::function<bool()>& condition)
{
    const auto limit = std::chrono::steady_clock::now() + std::chrono::milliseconds(patience);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > limit)
            return false;
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

std::optional<std::filesystem::path> onSearchPath(const std::string& program)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (const auto file = std::filesystem::path(folder) / program; access(file.c_str(), X_OK) == 0)
            return file;
    return std::nullopt;
}

RecordedTool::RecordedTool(const ScratchFolder& scratch)
    : record_(scratch / "recorded.jsonl"),
      gate_(scratch.makeFifo("gate")),
      gateReader_(open(gate_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)),
      gateWriter_(open(gate_.c_str(), O_WRONLY | O_CLOEXEC))
{
}

std::filesystem::path RecordedTool::program()
{
    return RECORDING_TOOL_PATH;
}

std::map<std::string, std::string> RecordedTool::environment(const std::string& behaviour) const
{
    return {{"RECORDING_FILE", record_}, {"RECORDING_GATE", gate_}, {"RECORDING_BEHAVIOUR", behaviour}};
}

std::vector<nlohmann::json> RecordedTool::events() const
{
    std::vector<nlohmann::json> events;
    std::ifstream file(record_);
    for (std::string line; std::getline(file, line);)
        events.push_back(nlohmann::json::parse(line));
    return events;
}

std::vector<std::vector<std::string>> RecordedTool::runs() const
{
    std::vector<std::vector<std::string>> runs;
    for (const nlohmann::json& event : events())
        if (event["event"] == "start")
            runs.push_back(event["arguments"]);
    return runs;
}

bool RecordedTool::hasStarted() const
{
    return !events().empty();
}

bool RecordedTool::hasEnded() const
{
    return std::ranges::any_of(events(), [](const auto& event) { return event["event"] == "end"; });
}

void RecordedTool::release() const
{
    if (write(gateWriter_.number(), "x", 1) != 1)
        throw std::system_error(errno, std::generic_category(), gate_.string());
}

}  // namespace quenchly::testing
