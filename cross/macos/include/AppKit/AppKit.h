// What Velko calls of AppKit, declared for the cross build. A build on a Mac uses Apple's own.
#pragma once

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

@class UTType;

typedef enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyAccessory = 1
} NSApplicationActivationPolicy;

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationWillTerminate:(NSNotification*)notification;
@end

@interface NSApplication : NSObject
@property(class, readonly, strong) NSApplication* sharedApplication;
@property(weak) id<NSApplicationDelegate> delegate;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activate;
- (void)finishLaunching;
- (void)run;
@end

typedef NSInteger NSModalResponse;
static const NSModalResponse NSModalResponseOK = 1;

@interface NSSavePanel : NSObject
@property(readonly, copy) NSURL* URL;
@property(copy) NSArray<UTType*>* allowedContentTypes;
@property(copy) NSString* title;
@property(copy) NSString* message;
@property(copy) NSString* nameFieldStringValue;
+ (NSSavePanel*)savePanel;
- (void)beginWithCompletionHandler:(void (^)(NSModalResponse))handler;
@end

@interface NSOpenPanel : NSSavePanel
+ (NSOpenPanel*)openPanel;
@end

@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
- (NSModalResponse)runModal;
@end

@interface NSRunningApplication : NSObject
@property(readonly) pid_t processIdentifier;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSURL* bundleURL;
@property(readonly, copy) NSString* localizedName;
+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)bundleIdentifier;
- (BOOL)terminate;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (BOOL)openURL:(NSURL*)url;
@end

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(readonly) NSRect frame;
@property(readonly) NSRect visibleFrame;
@property(readonly) NSEdgeInsets safeAreaInsets;
@property(readonly) NSRect auxiliaryTopLeftArea;
@end

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
@property(readonly) CGFloat thickness;
@end

#ifdef __cplusplus
extern "C" {
#endif

extern NSNotificationName const NSApplicationDidChangeScreenParametersNotification;
extern NSNotificationName const NSWorkspaceActiveSpaceDidChangeNotification;
extern NSNotificationName const NSWorkspaceDidActivateApplicationNotification;
extern NSNotificationName const NSWorkspaceDidLaunchApplicationNotification;
extern NSNotificationName const NSWorkspaceDidTerminateApplicationNotification;
extern NSNotificationName const NSWorkspaceDidWakeNotification;
extern NSNotificationName const NSWorkspaceScreensDidWakeNotification;
extern NSNotificationName const NSWorkspaceSessionDidBecomeActiveNotification;
extern NSString* const NSWorkspaceApplicationKey;

#ifdef __cplusplus
}
#endif
