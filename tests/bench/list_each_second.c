/* The least that a program can be which looks for processes once a second. */
#define _POSIX_C_SOURCE 200809L

#include <time.h>

#include "proc_listing.h"

int main(void)
{
    const struct timespec second = {.tv_sec = 1};
    while (listProcOnce() > 0)
        nanosleep(&second, NULL);
    return 1;
}
