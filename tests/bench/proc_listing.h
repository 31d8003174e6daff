#pragma once

#ifdef __cplusplus
extern "C"
#endif
    /* Lists /proc as plainly as can be; how many processes there are. */
    int
    listProcOnce(void);
