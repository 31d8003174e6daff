#include "recording_fakes.h"

#import <AppKit/AppKit.h>

std::vector<std::string> recordedCalls;
long fakeLoginItemStatus = 0;
bool fakeLoginItemSucceeds = true;

namespace {

NSStatusItem* theItem;
NSStatusBarButton* theButton;

void record(NSString* call)
{
    recordedCalls.push_back([call UTF8String]);
}

}  // namespace

@implementation NSStatusBar (Fake)
+ (NSStatusBar*)systemStatusBar
{
    static NSStatusBar* bar = [[NSStatusBar alloc] init];
    return bar;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length
{
    theItem = [[[NSStatusItem alloc] init] autorelease];
    record([NSString stringWithFormat:@"status item of length %g", length]);
    return theItem;
}

- (void)removeStatusItem:(NSStatusItem*)item
{
    record(item == theItem ? @"status item removed" : @"another status item removed");
}
@end

@implementation NSStatusItem (Fake)
- (NSStatusBarButton*)button
{
    if (theButton == nil)
        theButton = [[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, 60, 22)];
    return theButton;
}

- (void)setAutosaveName:(NSString*)name
{
    record([@"autosave name " stringByAppendingString:name]);
}
@end

@implementation NSImage (Fake)
- (void)setTemplate:(BOOL)isTemplate
{
    record(isTemplate ? @"template image" : @"coloured image");
}
@end

@implementation NSFont (Fake)
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(CGFloat)weight
{
    record([NSString stringWithFormat:@"digits of equal width, %g points, weight %g", size, weight]);
    return weight >= NSFontWeightBold ? [NSFont boldSystemFontOfSize:size] : [NSFont systemFontOfSize:size];
}
@end

@implementation NSView (Fake)
- (void)setAccessibilityLabel:(NSString*)label
{
    record([@"accessibility label " stringByAppendingString:label]);
}
@end

@interface SMAppService : NSObject
@end

@implementation SMAppService
+ (id)mainAppService
{
    return [[[SMAppService alloc] init] autorelease];
}

- (NSInteger)status
{
    return fakeLoginItemStatus;
}

- (BOOL)change:(NSString*)call error:(NSError**)error
{
    record(call);
    if (!fakeLoginItemSucceeds)
        *error = [NSError errorWithDomain:@"fake"
                                     code:1
                                 userInfo:[NSDictionary dictionaryWithObject:@"not permitted"
                                                                      forKey:NSLocalizedDescriptionKey]];
    return fakeLoginItemSucceeds;
}

- (BOOL)registerAndReturnError:(NSError**)error
{
    return [self change:@"register" error:error];
}

- (BOOL)unregisterAndReturnError:(NSError**)error
{
    return [self change:@"unregister" error:error];
}
@end
