// A label, as a state file may hold it, up to the first line break; then the bytes of a command line file.

#include <regex.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "command_line_expression.h"
#include "process_table_linux.h"
#include "procfs_text.h"
#include "target_scanner.h"
#include "text.h"

namespace {

using namespace quenchly;
namespace fs = std::filesystem;

constexpr ProcessId process = 999'999'999;  // not this one's own
constexpr double mostSeconds = 1;

void require(bool holds)
{
    if (!holds)
        __builtin_trap();
}

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// A folder laid out as `/proc` with one process, made once for the whole run.
class Folder {
public:
    Folder()
    {
        std::string name = (fs::temp_directory_path() / "quenchly-fuzz-XXXXXX").string();
        require(mkdtemp(name.data()) != nullptr);
        root_ = name;
        fs::create_directories(root_ / std::to_string(process));
    }
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(root_, ignored);
    }

    std::string root() const { return root_.string(); }
    void write(const char* file, std::string_view content) const
    {
        std::ofstream(root_ / std::to_string(process) / file, std::ios::binary) << content;
    }

private:
    fs::path root_;
};

const Folder& folder()
{
    static const Folder made;
    return made;
}

bool isPlain(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
    });
}

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Whether the C library must agree: it is asked about short texts without what POSIX leaves open or what it takes long
/// over, and anchors only at the ends.
bool isComparable(std::string_view pattern, std::string_view line)
{
    constexpr std::string_view open = "{}[]\\";
    if (pattern.starts_with('^'))
        pattern.remove_prefix(1);
    if (!pattern.empty() && std::string_view("*+?").find(pattern.front()) != std::string_view::npos)
        return false;
    if (pattern.ends_with('$'))
        pattern.remove_suffix(1);
    return pattern.size() <= 16 && line.size() <= 64 && isAscii(pattern) && isAscii(line) &&
           pattern.find_first_of(open) == std::string_view::npos &&
           pattern.find_first_of("^$") == std::string_view::npos && pattern.find('\0') == std::string_view::npos;
}

void compareWithTheLibrary(const std::string& pattern, const std::string& line, bool isFound)
{
    regex_t expression;
    if (regcomp(&expression, pattern.c_str(), REG_EXTENDED | REG_NOSUB) != 0) {
        require(!isFound);
        return;
    }
    const bool isFoundByTheLibrary = regexec(&expression, line.c_str(), 0, nullptr, 0) == 0;
    regfree(&expression);
    // An unmatched parenthesis is no expression to us and a character to the C library.
    const bool isBalanced = std::ranges::count(pattern, '(') == std::ranges::count(pattern, ')');
    require(isFound == isFoundByTheLibrary || !isBalanced);
}

void checkLine(const std::string& line)
{
    require(isValidUtf8(line));
    require(std::ranges::none_of(line, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }));
    require(printable(line) == line);
    require(joinedArguments(line) == line);
}

/// Whether the pattern is in the line.
bool checkExpression(const std::string& pattern, const std::string& line)
{
    const double before = processorSeconds();
    const CommandLineExpression expression(pattern);
    const bool isFound = expression.isIn(line);
    require(processorSeconds() - before < mostSeconds);

    require(expression.isIn(line) == isFound);
    if (pattern.empty())
        require(isFound);
    if (isPlain(pattern) && pattern.size() <= 256)
        require(isFound == (line.find(pattern) != std::string::npos));
    if (isComparable(pattern, line))
        compareWithTheLibrary(pattern, line, isFound);
    return isFound;
}

/// The label is the process's name too, so that a search by name has something to find.
void checkTable(const TargetScanner::Search& search, const std::string& name, const std::string& arguments, bool isIn)
{
    const std::string recorded = name.substr(0, 15);
    folder().write("cmdline", arguments);
    folder().write("comm", recorded + '\n');
    folder().write("stat", std::to_string(process) + " (" + recorded + ") S 1 1 1 0 -1 4194304 0");

    const std::vector<ProcessId> found{process};
    const std::vector<ProcessId> none;
    const auto table = makeLinuxProcessTable(folder().root());
    for (int refresh = 0; refresh < 2; ++refresh) {
        table->beginRefresh();
        require(table->matching(search.pattern) == (isIn ? found : none));
        if (name.size() < 15)
            require(table->named(name) == (name.empty() ? none : found));
        else
            table->named(name);
        require(table->states(found) == std::map<ProcessId, std::string>{{process, "S"}});
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string label(bytes.substr(0, bytes.find('\n')));
    const std::string arguments(bytes.substr(std::min(label.size() + 1, bytes.size())));
    const TargetScanner::Search search = TargetScanner::search(label);

    const std::string joined = joinedArguments(arguments);
    checkLine(joined);
    const std::string line = joined.empty() ? '[' + printable(label.substr(0, 15)) + ']' : joined;
    checkTable(search, label, arguments, checkExpression(search.pattern, line));
    parseStat(bytes);
    return 0;
}
