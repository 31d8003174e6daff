#include "sleepers.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdlib>

namespace quenchly::bench {

Sleepers::Sleepers(int count)
{
    if (::pipe2(input_, O_CLOEXEC) != 0 || ::pipe2(ready_, O_CLOEXEC) != 0)
        std::exit(1);
    for (int started = 0; started < count; ++started)
        start();
    for (char byte = 0; count > 0 && ::read(ready_[0], &byte, 1) == 1; --count) {
    }
}

Sleepers::~Sleepers()
{
    for (const int end : {input_[0], input_[1], ready_[0], ready_[1]})
        ::close(end);
    for (const pid_t id : ids_)
        ::waitpid(id, nullptr, 0);
}

void Sleepers::wakeAll() const
{
    for (const pid_t id : ids_)
        ::kill(id, SIGUSR1);
    const timespec untilAllSleep{0, 30'000'000};
    ::nanosleep(&untilAllSleep, nullptr);
}

void Sleepers::start()
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input_[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ready_[1], STDOUT_FILENO);
    char program[] = SLEEPER_PATH;
    char option[] = "--type=utility";
    char folder[] = "--user-data-dir=/home/somebody/.config/something";
    char* arguments[] = {program, option, folder, nullptr};
    pid_t id = 0;
    if (::posix_spawn(&id, program, &actions, nullptr, arguments, environ) != 0)
        std::exit(1);
    posix_spawn_file_actions_destroy(&actions);
    ids_.push_back(id);
}

}  // namespace quenchly::bench
