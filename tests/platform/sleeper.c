/* A process to look at. It writes "." to standard output when ready and obeys standard input, one command a line:
   "name TEXT" renames it, "exec ARGUMENTS" makes it run its own file again with those arguments, split at tabs.
   It ends with its input. The user signal only makes it run for a moment. */
#define _POSIX_C_SOURCE 200809L

#include <signal.h>
#include <stdio.h>
#include <string.h>
#include <sys/prctl.h>
#include <unistd.h>

enum { mostArguments = 16 };

static void wake(int number)
{
    (void)number;
}

static void runAgain(char* text)
{
    char* arguments[mostArguments + 1] = {0};
    int count = 0;
    for (char* word = strtok(text, "\t"); word && count < mostArguments; word = strtok(NULL, "\t"))
        arguments[count++] = word;
    execv("/proc/self/exe", arguments);
}

int main(void)
{
    struct sigaction action = {.sa_handler = wake, .sa_flags = SA_RESTART};
    char command[4096];
    sigaction(SIGUSR1, &action, NULL);
    setvbuf(stdin, NULL, _IONBF, 0);
    if (write(STDOUT_FILENO, ".", 1) != 1)
        return 1;
    while (fgets(command, sizeof command, stdin)) {
        command[strcspn(command, "\n")] = '\0';
        if (strncmp(command, "exec ", 5) == 0)
            runAgain(command + 5);
        if (strncmp(command, "name ", 5) == 0 && prctl(PR_SET_NAME, command + 5) == 0 &&
            write(STDOUT_FILENO, ".", 1) != 1)
            return 1;
    }
    return 0;
}
