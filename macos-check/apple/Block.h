#pragma once

// GNUstep's headers include it wherever blocks are compiled.
#ifdef __cplusplus
extern "C" {
#endif
void* _Block_copy(const void*);
void _Block_release(const void*);
#ifdef __cplusplus
}
#endif
