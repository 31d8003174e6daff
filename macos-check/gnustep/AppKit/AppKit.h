#pragma once

#include_next <AppKit/AppKit.h>

// What AppKit has, by Apple's documentation, and GNUstep 0.29's headers lack. Only this project vouches for these.
constexpr NSAlertStyle NSAlertStyleInformational = NSInformationalAlertStyle;

@interface NSPasteboard (Gap)
- (NSInteger)clearContents;
@end

@interface NSWorkspace (Gap)
- (void)recycleURLs:(NSArray*)URLs completionHandler:(void (^)(NSDictionary* newURLs, NSError* error))handler;
@end

@interface NSApplication (Gap)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
@end

@interface NSStatusItem (Gap)
@property(readonly, strong) NSStatusBarButton* button;
@property(copy) NSString* autosaveName;
@end

@interface NSImage (Gap)
- (void)setTemplate:(BOOL)isTemplate;
@end

@interface NSFont (Gap)
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)fontSize weight:(CGFloat)weight;
@end

@interface NSWindow (Gap)
- (void)setStyleMask:(NSUInteger)styleMask;
@end

@interface NSAppleEventManager (Gap)
+ (NSAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(uint32_t)eventClass
             andEventID:(uint32_t)eventID;
@end

@interface NSView (Gap)
- (void)setAccessibilityLabel:(NSString*)accessibilityLabel;
@end
