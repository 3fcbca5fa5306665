// What Velko calls of Application Services, declared for the cross build. A build on a Mac uses Apple's own.
#pragma once

#import <CoreFoundation/CoreFoundation.h>
#import <CoreGraphics/CoreGraphics.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __AXUIElement* AXUIElementRef;
typedef const struct __AXValue* AXValueRef;
typedef struct __AXObserver* AXObserverRef;
typedef void (*AXObserverCallback)(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                                   void* context);

typedef enum AXError : int32_t { kAXErrorSuccess = 0, kAXErrorNoValue = -25212 } AXError;

typedef enum AXValueType : uint32_t {
    kAXValueTypeCGPoint = 1,
    kAXValueTypeCGSize = 2,
    kAXValueTypeAXError = 5
} AXValueType;

typedef uint32_t AXCopyMultipleAttributeOptions;

extern const CFStringRef kAXTrustedCheckOptionPrompt;

Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);

CFTypeID AXUIElementGetTypeID(void);
AXUIElementRef AXUIElementCreateApplication(pid_t pid);
AXUIElementRef AXUIElementCreateSystemWide(void);
AXError AXUIElementCopyAttributeNames(AXUIElementRef element, CFArrayRef* names);
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value);
AXError AXUIElementCopyElementAtPosition(AXUIElementRef application, float x, float y,
                                         AXUIElementRef* element);
AXError AXUIElementCopyMultipleAttributeValues(AXUIElementRef element, CFArrayRef attributes,
                                               AXCopyMultipleAttributeOptions options, CFArrayRef* values);
AXError AXUIElementGetPid(AXUIElementRef element, pid_t* pid);
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds);

AXError AXObserverCreate(pid_t application, AXObserverCallback callback, AXObserverRef* observer);
AXError AXObserverAddNotification(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                                  void* context);
CFRunLoopSourceRef AXObserverGetRunLoopSource(AXObserverRef observer);

CFTypeID AXValueGetTypeID(void);
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result);

#ifdef __cplusplus
}
#endif
