#include "script_interpreter.h"

#include <array>
#include <fstream>
#include <sstream>
#include <string_view>

namespace quenchly {
namespace {

constexpr std::string_view mark = "#!";
constexpr std::size_t longestLine = 256;  // bytes; systems read no more either

std::string startOf(const std::filesystem::path& file)
{
    std::array<char, longestLine> bytes{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), bytes.size());
    return {bytes.data(), static_cast<std::size_t>(stream.gcount())};
}

/// The program that env is told to run: the first word that is neither an option nor an assignment.
std::string programOfEnv(std::istream& words)
{
    std::string word;
    while (words >> word)
        if (!word.starts_with('-') && word.find('=') == std::string::npos)
            return word;
    return {};
}

}  // namespace

ScriptInterpreter scriptInterpreter(const std::filesystem::path& script)
{
    const std::string start = startOf(script);
    if (!start.starts_with(mark))
        return {};
    std::istringstream words(start.substr(mark.size(), start.find('\n') - mark.size()));
    std::string program;
    words >> program;
    ScriptInterpreter interpreter{.program = program, .name = std::filesystem::path(program).filename()};
    if (interpreter.name == "env")
        interpreter.name = std::filesystem::path(programOfEnv(words)).filename();
    return interpreter;
}

}  // namespace quenchly
