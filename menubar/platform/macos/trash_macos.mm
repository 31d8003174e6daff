#import <AppKit/AppKit.h>

#include "cocoa_support.h"
#include "trash.h"

namespace quenchly {
namespace {

void moveToTrash(const std::filesystem::path& item, const TrashCompletion& completion)
{
    @autoreleasepool {
        NSString* path = nsString(item.string());
        // An empty path stands for the current folder.
        if ([path length] == 0)
            return completion("There is nothing to move.");
        const TrashCompletion done = completion;  // the block outlives the reference
        NSURL* url = [NSURL fileURLWithPath:path];
        [[NSWorkspace sharedWorkspace] recycleURLs:[NSArray arrayWithObject:url]
                                 completionHandler:^(NSDictionary*, NSError* error) {
                                   done(error == nil ? std::string() : utf8Text([error description]));
                                 }];
    }
}

}  // namespace

Trash makeTrash(const std::filesystem::path&)
{
    return moveToTrash;
}

}  // namespace quenchly
