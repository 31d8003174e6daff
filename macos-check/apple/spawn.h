#pragma once

#include_next <spawn.h>

#undef POSIX_SPAWN_SETSID
#define POSIX_SPAWN_SETSID 0x0400
#define POSIX_SPAWN_CLOEXEC_DEFAULT 0x4000
