#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
typedef const void* CFTypeRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFString* CFStringRef;
typedef long CFIndex;
typedef unsigned char Boolean;
typedef uint32_t CFStringEncoding;

#define kCFStringEncodingUTF8 ((CFStringEncoding)0x08000100)

void CFRelease(CFTypeRef);
CFArrayRef CFLocaleCopyPreferredLanguages(void) __attribute__((cf_returns_retained));
CFIndex CFArrayGetCount(CFArrayRef);
const void* CFArrayGetValueAtIndex(CFArrayRef, CFIndex);
Boolean CFStringGetCString(CFStringRef, char*, CFIndex, CFStringEncoding);
#ifdef __cplusplus
}
#endif
