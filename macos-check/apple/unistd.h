#pragma once

#include_next <unistd.h>

#ifdef __cplusplus
extern "C"
#endif
    int
    getpeereid(int, uid_t*, gid_t*);
