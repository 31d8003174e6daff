#include "recording_fakes.h"

#import <AppKit/AppKit.h>
#import <objc/runtime.h>
#include <sys/sysctl.h>

#include <cstring>
#include <utility>

#include "live_sample.h"
#include "run_later.h"

std::vector<std::string> recordedCalls;
long fakeLoginItemStatus = 0;
bool fakeLoginItemSucceeds = true;
long fakeAnswer = 0;
bool fakeTrashSucceeds = true;
const char* fakeHardwareModel = nullptr;
bool fakeAlertIsUp = false;
bool fakeAddressOpens = true;
std::optional<quenchly::ToolOutput> fakeToolOutput;

namespace {

NSStatusItem* theItem;
NSStatusBarButton* theButton;
std::vector<std::function<void()>> putOff;
std::function<void()> reopen;
FakeBundleFacts bundleFacts;

NSString* text(const std::string& utf8)
{
    return [NSString stringWithUTF8String:utf8.c_str()];
}

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

+ (void)openSystemSettingsLoginItems
{
    record(@"open the settings of login items");
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

@implementation NSApplication (Fake)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy
{
    record(policy == NSApplicationActivationPolicyRegular ? @"regular" : @"accessory");
    return YES;
}

- (NSWindow*)modalWindow
{
    static NSWindow* alert = [[NSWindow alloc] init];
    return fakeAlertIsUp ? alert : nil;
}

- (void)activateIgnoringOtherApps:(BOOL)flag
{
    record(flag ? @"activate before all others" : @"activate");
}

- (void)terminate:(id)sender
{
    record([NSString stringWithFormat:@"terminate %@", sender]);
}
@end

@implementation NSAlert (Fake)
- (NSInteger)runModal
{
    record([self alertStyle] == NSInformationalAlertStyle ? @"informational alert" : @"alert");
    record([self messageText]);
    record([self informativeText]);
    for (NSButton* button in [self buttons])
        record([@"button " stringByAppendingString:[button title]]);
    return NSAlertFirstButtonReturn + fakeAnswer;
}
@end

@interface FakePasteboard : NSObject
@end

@implementation FakePasteboard
- (NSInteger)clearContents
{
    record(@"pasteboard cleared");
    return 1;
}

- (BOOL)setString:(NSString*)text forType:(NSString*)type
{
    record([NSString stringWithFormat:@"%@: %@", type, text]);
    return YES;
}
@end

@implementation NSPasteboard (Fake)
+ (NSPasteboard*)generalPasteboard
{
    return static_cast<NSPasteboard*>([[[FakePasteboard alloc] init] autorelease]);
}
@end

@interface FakeMainBundle : NSObject
@end

@implementation FakeMainBundle
+ (id)mainBundle
{
    return [[[FakeMainBundle alloc] init] autorelease];
}

+ (id)bundleWithPath:(NSString*)path
{
    record([@"bundle at " stringByAppendingString:path]);
    return [[[FakeMainBundle alloc] init] autorelease];
}

- (NSString*)bundlePath
{
    return text(bundleFacts.path);
}

- (NSString*)executablePath
{
    return [[self bundlePath] stringByAppendingPathComponent:@"Contents/MacOS/Some"];
}

- (NSString*)privateFrameworksPath
{
    return [[self bundlePath] stringByAppendingPathComponent:@"Contents/Frameworks"];
}

- (NSString*)bundleIdentifier
{
    return bundleFacts.identifier ? text(*bundleFacts.identifier) : nil;
}

- (NSDictionary*)infoDictionary
{
    NSMutableDictionary* info = [NSMutableDictionary dictionary];
    [info setObject:[NSNumber numberWithInt:1] forKey:@"LSUIElement"];
    for (const auto& [key, value] : bundleFacts.info)
        [info setObject:text(value) forKey:text(key)];
    return info;
}

- (BOOL)loadAndReturnError:(NSError**)error
{
    *error = [NSError errorWithDomain:@"fake"
                                 code:1
                             userInfo:[NSDictionary dictionaryWithObject:@"signed by 100%d others"
                                                                  forKey:NSLocalizedDescriptionKey]];
    return NO;
}
@end

namespace {

// Only while a test asks for it, because GNUstep itself lives on its bundles.
void exchangeClassMethods(SEL selector)
{
    method_exchangeImplementations(class_getClassMethod([NSBundle class], selector),
                                   class_getClassMethod([FakeMainBundle class], selector));
}

}  // namespace

FakeBundle::FakeBundle(FakeBundleFacts facts)
{
    bundleFacts = std::move(facts);
    exchangeClassMethods(@selector(mainBundle));
    exchangeClassMethods(@selector(bundleWithPath:));
}

FakeBundle::~FakeBundle()
{
    exchangeClassMethods(@selector(mainBundle));
    exchangeClassMethods(@selector(bundleWithPath:));
}

@implementation NSAppleEventManager (Fake)
+ (NSAppleEventManager*)sharedAppleEventManager
{
    static NSAppleEventManager* manager = [[NSAppleEventManager alloc] init];
    return manager;
}

- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(uint32_t)eventClass
             andEventID:(uint32_t)eventId
{
    if (eventClass == 0x61657674 && eventId == 0x72617070)
        reopen = [handler, selector] { [handler performSelector:selector withObject:nil withObject:nil]; };
}
@end

@implementation NSWorkspace (Fake)
- (BOOL)openURL:(NSURL*)url
{
    record([@"open " stringByAppendingString:[url absoluteString]]);
    return fakeAddressOpens;
}

- (void)recycleURLs:(NSArray*)urls completionHandler:(void (^)(NSDictionary*, NSError*))handler
{
    record([@"recycle " stringByAppendingString:[[urls objectAtIndex:0] path]]);
    NSError* error = fakeTrashSucceeds ? nil : [NSError errorWithDomain:@"trash is full" code:28 userInfo:nil];
    handler([NSDictionary dictionary], error);
}
@end

@interface FakeUpdater : NSObject
@end

@implementation FakeUpdater
- (BOOL)automaticallyChecksForUpdates
{
    return YES;
}

- (void)setAutomaticallyChecksForUpdates:(BOOL)enabled
{
    record(enabled ? @"automatic checks on" : @"automatic checks off");
}

- (void)setAutomaticallyDownloadsUpdates:(BOOL)enabled
{
    record(enabled ? @"automatic downloads on" : @"automatic downloads off");
}
@end

@interface FakeUpdaterController : NSObject
@end

@implementation FakeUpdaterController
- (id)initWithStartingUpdater:(BOOL)start updaterDelegate:(id)delegate userDriverDelegate:(id)driverDelegate
{
    record(start && delegate == nil && driverDelegate == nil ? @"updater started" : @"updater made otherwise");
    return [super init];
}

- (id)updater
{
    return [[[FakeUpdater alloc] init] autorelease];
}

- (void)checkForUpdates:(id)sender
{
    record(@"check for updates");
}

- (void)dealloc
{
    record(@"updater released");
    [super dealloc];
}
@end

void offerUpdateFramework()
{
    objc_registerClassPair(objc_allocateClassPair([FakeUpdaterController class], "SPUStandardUpdaterController", 0));
}

void runWhatWasPutOff()
{
    for (const auto& task : std::exchange(putOff, {}))
        task();
}

bool startAgain()
{
    if (reopen)
        reopen();
    return reopen != nullptr;
}

namespace quenchly {

void runLater(std::chrono::milliseconds, const std::function<void()>& task)
{
    putOff.push_back(task);
}

std::optional<ToolOutput> runTool(const std::vector<std::string>& command)
{
    std::string line;
    for (const std::string& word : command)
        line += (line.empty() ? "" : "|") + word;
    recordedCalls.push_back(line);
    return fakeToolOutput;
}

std::optional<LastMetrics> LiveMetricsSampler::sample(bool)
{
    return std::nullopt;
}

}  // namespace quenchly

int sysctlbyname(const char* name, void* buffer, size_t* size, void*, size_t)
{
    if (fakeHardwareModel == nullptr || std::strcmp(name, "hw.model") != 0)
        return -1;
    const size_t needed = *fakeHardwareModel == 0 ? 0 : std::strlen(fakeHardwareModel) + 1;
    if (buffer != nullptr && *size < needed)
        return -1;
    if (buffer != nullptr)
        std::memcpy(buffer, fakeHardwareModel, needed);
    *size = needed;
    return 0;
}

// What a block that is never copied takes of the runtime of blocks, which is no package of its own everywhere.
extern "C" {
void* _NSConcreteStackBlock[32];
void* _NSConcreteGlobalBlock[32];
void _Block_object_assign(void*, const void*, const int) {}
void _Block_object_dispose(const void*, const int) {}
}
