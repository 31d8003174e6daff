#pragma once

#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

struct xsw_usage {
    uint64_t xsu_total;
    uint64_t xsu_avail;
    uint64_t xsu_used;
    uint32_t xsu_pagesize;
    int xsu_encrypted;
};

#ifdef __cplusplus
extern "C"
#endif
    int
    sysctlbyname(const char*, void*, size_t*, void*, size_t);
