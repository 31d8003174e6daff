#include "system_log_linux.h"

#include <syslog.h>
#include <unistd.h>

#include "log_line.h"

namespace quenchly {

void writeToSystemLog(const std::string& line)
{
    // Started by a session, standard error ends in the journal too, and each line would be there twice.
    const int echo = isatty(STDERR_FILENO) != 0 ? LOG_PERROR : 0;
    openlog("quenchly-menubar", LOG_PID | echo, LOG_USER);
    syslog(LOG_WARNING, "%s", logLine(line).c_str());
}

}  // namespace quenchly
