#pragma once

#import <Foundation/Foundation.h>

#include <string>

// The build uses ARC; the adapter tests run the same sources where only manual counting exists.
#if __has_feature(objc_arc)
#define QUENCHLY_RETAIN(object) (object)
#define QUENCHLY_RELEASE(object) ((void)((object) = nil))
#else
#define QUENCHLY_RETAIN(object) [(object) retain]
#define QUENCHLY_RELEASE(object) ([(object) release], (void)((object) = nil))
#endif

namespace quenchly {

/// Empty when `text` is not UTF-8.
inline NSString* nsString(const std::string& text)
{
    NSString* string = [NSString stringWithUTF8String:text.c_str()];
    return string != nil ? string : @"";
}

/// Empty for nil.
inline std::string utf8Text(NSString* string)
{
    const char* text = [string UTF8String];
    return text != nullptr ? text : std::string();
}

}  // namespace quenchly
