#include "system_log_linux.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

#include "descriptor.h"
#include "test_files.h"

namespace quenchly {
namespace {

/// Logs `line` in a process of its own whose standard error is `errors`.
void logFromAChild(int errors, const std::string& line)
{
    const pid_t child = fork();
    if (child == 0) {
        dup2(errors, STDERR_FILENO);
        writeToSystemLog(line);
        _exit(0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
}

/// What a terminal shows when `line` is logged in it.
std::string shownByATerminal(const std::string& line)
{
    const Descriptor terminal(posix_openpt(O_RDWR | O_NOCTTY));
    if (terminal.number() < 0 || grantpt(terminal.number()) != 0 || unlockpt(terminal.number()) != 0)
        return "no terminal";
    const Descriptor program(open(ptsname(terminal.number()), O_RDWR | O_NOCTTY));
    logFromAChild(program.number(), line);
    std::array<char, 8192> text;
    const ssize_t count = read(terminal.number(), text.data(), text.size());
    return {text.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

TEST(SystemLogTest, InATerminalTheLineIsSeenToo)
{
    const std::string shown = shownByATerminal("Quenchly Open at Login failed: 100% %s no");
    EXPECT_EQ(shown.rfind("quenchly-menubar[", 0), 0U) << shown;
    EXPECT_NE(shown.find("]: Quenchly Open at Login failed: 100% %s no\r\n"), std::string::npos) << shown;
}

TEST(SystemLogTest, ALineStaysOneLineWithoutControlCharacters)
{
    const std::string shown = shownByATerminal("one\ntwo\x1b[31mthree");
    EXPECT_EQ(shown.find('\n'), shown.size() - 1) << shown;
    EXPECT_EQ(shown.find('\x1b'), std::string::npos) << shown;
}

TEST(SystemLogTest, WhatIsNoTerminalGetsNothing)
{
    const testing::ScratchFolder scratch;
    const Descriptor file(open((scratch / "errors").c_str(), O_CREAT | O_RDWR, 0600));
    logFromAChild(file.number(), "for the journal only");
    EXPECT_EQ(lseek(file.number(), 0, SEEK_END), 0);
}

}  // namespace
}  // namespace quenchly
