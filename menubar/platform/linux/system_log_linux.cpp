#include "system_log_linux.h"

#include <syslog.h>
#include <unistd.h>

#include "text.h"

namespace quenchly {
namespace {

/// Longer than any line of ours; what a system says about an error may be of any length.
constexpr std::size_t maxCharacters = 1000;

}  // namespace

void writeToSystemLog(const std::string& line)
{
    // Started by a session, standard error ends in the journal too, and each line would be there twice.
    const int echo = isatty(STDERR_FILENO) != 0 ? LOG_PERROR : 0;
    openlog("quenchly-menubar", LOG_PID | echo, LOG_USER);
    // A line break or an escape sequence in an error's text must not pass for a line of its own.
    syslog(LOG_WARNING, "%s", displayLine(line, maxCharacters).c_str());
}

}  // namespace quenchly
