// What Velko calls of Carbon, declared for the cross build. A build on a Mac uses Apple's own.
#pragma once

#import <ApplicationServices/ApplicationServices.h>
#import <CoreFoundation/CoreFoundation.h>
#import <CoreServices/CoreServices.h>
#include <MacTypes.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Events and global keys

typedef struct __OpaqueEvent* OpaqueEventRefRef;
typedef struct __OpaqueEventTarget* OpaqueEventTargetRefRef;
typedef struct __OpaqueEventHandler* OpaqueEventHandlerRefRef;
typedef struct __OpaqueEventHandlerCall* OpaqueEventHandlerCallRefRef;
typedef struct __OpaqueEventHotKey* OpaqueEventHotKeyRefRef;

typedef OpaqueEventRefRef EventRef;
typedef OpaqueEventTargetRefRef EventTargetRef;
typedef OpaqueEventHandlerRefRef EventHandlerRef;
typedef OpaqueEventHandlerCallRefRef EventHandlerCallRef;
typedef OpaqueEventHotKeyRefRef EventHotKeyRef;

typedef OSType EventParamName;
typedef OSType EventParamType;

typedef int32_t (*EventHandlerProcPtr)(EventHandlerCallRef next, EventRef event, void* context);
typedef EventHandlerProcPtr EventHandlerUPP;

#pragma pack(push, 2)

typedef struct EventTypeSpec {
    OSType eventClass;
    uint32_t eventKind;
} EventTypeSpec;

typedef struct EventHotKeyID {
    OSType signature;
    uint32_t id;
} EventHotKeyID;

#pragma pack(pop)

enum { eventNotHandledErr = -9874, eventHotKeyExistsErr = -9878 };
enum { kEventClassKeyboard = 0x6b657962 };
enum { kEventHotKeyPressed = 5 };
enum { kEventParamDirectObject = 0x2d2d2d2d };
enum { typeEventHotKeyID = 0x686b6964 };
enum { kEventHotKeyNoOptions = 0 };
enum { cmdKey = 1 << 8, shiftKey = 1 << 9, optionKey = 1 << 11, controlKey = 1 << 12 };

EventTargetRef GetApplicationEventTarget(void);
int32_t InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount typeCount,
                            const EventTypeSpec* types, void* context, EventHandlerRef* installed);
int32_t RemoveEventHandler(EventHandlerRef handler);
int32_t GetEventParameter(EventRef event, EventParamName name, EventParamType desiredType,
                          EventParamType* actualType, ByteCount capacity, ByteCount* actualSize, void* data);

int32_t RegisterEventHotKey(uint32_t keyCode, uint32_t modifiers, EventHotKeyID hotKeyID,
                            EventTargetRef target, uint32_t options, EventHotKeyRef* hotKey);
int32_t UnregisterEventHotKey(EventHotKeyRef hotKey);
int32_t CopySymbolicHotKeys(CFArrayRef* hotKeys);

// The keyboard's layout

typedef struct __TISInputSource* TISInputSourceRef;

extern const CFStringRef kTISPropertyUnicodeKeyLayoutData;
extern const CFStringRef kTISNotifySelectedKeyboardInputSourceChanged;

TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource(void);
void* TISGetInputSourceProperty(TISInputSourceRef source, CFStringRef key);
uint8_t LMGetKbdType(void);

#ifdef __cplusplus
}
#endif
