// What Velko calls of Carbon and of Core Services, which Carbon brings with it, declared for the cross build. A
// build on a Mac uses Apple's own.
#pragma once

#import <ApplicationServices/ApplicationServices.h>
#import <CoreFoundation/CoreFoundation.h>
#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

// Events and global keys

typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;

typedef OSType EventParamName;
typedef OSType EventParamType;

typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef next, EventRef event, void* context);
typedef EventHandlerProcPtr EventHandlerUPP;

#pragma pack(push, 2)

typedef struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
} EventTypeSpec;

typedef struct EventHotKeyID {
    OSType signature;
    UInt32 id;
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
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount typeCount,
                             const EventTypeSpec* types, void* context, EventHandlerRef* installed);
OSStatus RemoveEventHandler(EventHandlerRef handler);
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType desiredType,
                           EventParamType* actualType, ByteCount capacity, ByteCount* actualSize, void* data);

OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID hotKeyID, EventTargetRef target,
                             OptionBits options, EventHotKeyRef* hotKey);
OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey);
OSStatus CopySymbolicHotKeys(CFArrayRef* hotKeys);

// The keyboard's layout

typedef struct __TISInputSource* TISInputSourceRef;

extern const CFStringRef kTISPropertyUnicodeKeyLayoutData;
extern const CFStringRef kTISNotifySelectedKeyboardInputSourceChanged;

TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource(void);
void* TISGetInputSourceProperty(TISInputSourceRef source, CFStringRef key);
UInt8 LMGetKbdType(void);

typedef struct UCKeyboardLayout UCKeyboardLayout;

enum { kUCKeyActionDisplay = 3 };
enum { kUCKeyTranslateNoDeadKeysMask = 1 };

OSStatus UCKeyTranslate(const UCKeyboardLayout* layout, UInt16 keyCode, UInt16 action, UInt32 modifiers,
                        UInt32 keyboardType, OptionBits options, UInt32* deadKeys, UniCharCount capacity,
                        UniCharCount* length, UniChar* text);

#ifdef __cplusplus
}
#endif
