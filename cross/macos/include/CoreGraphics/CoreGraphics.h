// What Velko calls of Core Graphics, declared for the cross build. A build on a Mac uses Apple's own.
#pragma once

#import <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct __CGEvent* CGEventRef;
typedef struct __CGEventTapProxy* CGEventTapProxy;
typedef uint64_t CGEventMask;

typedef enum CGEventTapLocation : uint32_t { kCGSessionEventTap = 1 } CGEventTapLocation;
typedef enum CGEventTapPlacement : uint32_t { kCGHeadInsertEventTap = 0 } CGEventTapPlacement;
typedef enum CGEventTapOptions : uint32_t { kCGEventTapOptionListenOnly = 1 } CGEventTapOptions;
typedef enum CGEventType : uint32_t {
    kCGEventLeftMouseDown = 1,
    kCGEventRightMouseDown = 3,
    kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
    kCGEventTapDisabledByUserInput = 0xFFFFFFFF
} CGEventType;

typedef uint64_t CGEventFlags;
enum : CGEventFlags { kCGEventFlagMaskAlternate = 0x00080000 };

#define CGEventMaskBit(eventType) ((CGEventMask)1 << (eventType))

typedef CGEventRef (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                         void* context);

CFMachPortRef CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                               CGEventTapOptions options, CGEventMask events, CGEventTapCallBack callback,
                               void* context);
void CGEventTapEnable(CFMachPortRef tap, bool enable);
bool CGEventTapIsEnabled(CFMachPortRef tap);
CGPoint CGEventGetLocation(CGEventRef event);
CGEventFlags CGEventGetFlags(CGEventRef event);

typedef uint32_t CGWindowID;
typedef int32_t CGWindowLevel;

enum : CGWindowID { kCGNullWindowID = 0 };

typedef enum CGWindowListOption : uint32_t { kCGWindowListOptionOnScreenOnly = 1 << 0 } CGWindowListOption;

typedef enum CGWindowLevelKey : int32_t { kCGPopUpMenuWindowLevelKey = 11 } CGWindowLevelKey;

extern const CFStringRef kCGWindowBounds;
extern const CFStringRef kCGWindowLayer;
extern const CFStringRef kCGWindowOwnerPID;

bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef dictionary, CGRect* rect);

CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow);
CGWindowLevel CGWindowLevelForKey(CGWindowLevelKey key);

#ifdef __cplusplus
}
#endif
