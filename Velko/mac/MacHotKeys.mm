#import "Velko/mac/MacHotKeys.h"

#import <Foundation/Foundation.h>

#include <array>
#include <utility>

#include "VelkoEngine/mac/Conversions.h"
#import "VelkoEngine/mac/Observers.h"

namespace velko {

namespace {

constexpr OSType ownSignature = 0x566C6B6F;  // "Vlko"

UInt32 modifiersOf(const KeyCombination& keys) {
    return static_cast<UInt32>((keys.command ? cmdKey : 0) | (keys.shift ? shiftKey : 0) |
                               (keys.option ? optionKey : 0) | (keys.control ? controlKey : 0));
}

std::optional<std::int64_t> numberIn(CFDictionaryRef dictionary, NSString* key) {
    return wholeNumber(CFDictionaryGetValue(dictionary, (__bridge const void*)key));
}

bool isTrue(CFTypeRef object) {
    return object != nullptr && CFGetTypeID(object) == CFBooleanGetTypeID() &&
           CFBooleanGetValue(static_cast<CFBooleanRef>(object));
}

}  // namespace

MacHotKeys::~MacHotKeys() {
    if (listening_ != nullptr) {
        RemoveEventHandler(listening_);
    }
}

bool MacHotKeys::listen() {
    if (listening_ != nullptr) {
        return true;
    }
    const EventTypeSpec pressed{.eventClass = kEventClassKeyboard, .eventKind = kEventHotKeyPressed};
    const auto hear = [](EventHandlerCallRef, EventRef event, void* context) -> OSStatus {
        EventHotKeyID key{};
        const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr,
                                                  sizeof key, nullptr, &key);
        const auto& handlers = *static_cast<Handlers*>(context);
        const auto found = handlers.find(key.id);
        // Keys of libraries in this process arrive here, too.
        if (status != noErr || key.signature != ownSignature || found == handlers.end()) {
            return eventNotHandledErr;
        }
        const auto handler = found->second;  // it may end its own subscription
        handler();
        return noErr;
    };
    const OSStatus status =
        InstallEventHandler(GetApplicationEventTarget(), hear, 1, &pressed, handlers_.get(), &listening_);
    return status == noErr;
}

std::expected<Subscription, HotKeys::Refusal> MacHotKeys::add(const KeyCombination& keys,
                                                              std::function<void()> pressed) {
    if (!listen()) {
        return std::unexpected(Refusal::failed);
    }
    const UInt32 number = nextID_++;
    EventHotKeyRef hotKey = nullptr;
    const OSStatus status =
        RegisterEventHotKey(keys.key, modifiersOf(keys), {.signature = ownSignature, .id = number},
                            GetApplicationEventTarget(), kEventHotKeyNoOptions, &hotKey);
    if (status != noErr || hotKey == nullptr) {
        return std::unexpected(status == eventHotKeyExistsErr ? Refusal::taken : Refusal::failed);
    }
    handlers_->emplace(number, std::move(pressed));
    return Subscription([hotKey, number, handlers = std::weak_ptr(handlers_)] {
        UnregisterEventHotKey(hotKey);
        if (const auto still = handlers.lock()) {
            // The handler's captures are destroyed last, because they may end another subscription.
            const auto ended = still->extract(number);
        }
    });
}

bool MacHotKeys::isOfSystem(const KeyCombination& keys) const {
    CFRef<CFArrayRef> shortcuts;
    if (CopySymbolicHotKeys(shortcuts.out()) != noErr || !shortcuts) {
        return false;
    }
    for (CFIndex index = 0; index < CFArrayGetCount(shortcuts.get()); ++index) {
        const auto* const object = CFArrayGetValueAtIndex(shortcuts.get(), index);
        if (object == nullptr || CFGetTypeID(object) != CFDictionaryGetTypeID()) {
            continue;
        }
        const auto shortcut = static_cast<CFDictionaryRef>(object);
        const bool isOn =
            isTrue(CFDictionaryGetValue(shortcut, (__bridge const void*)@"kHISymbolicHotKeyEnabled"));
        if (isOn && numberIn(shortcut, @"kHISymbolicHotKeyCode") == keys.key &&
            numberIn(shortcut, @"kHISymbolicHotKeyModifiers") == modifiersOf(keys)) {
            return true;
        }
    }
    return false;
}

std::optional<std::string> MacHotKeys::typedBy(KeyCode key) const {
    const auto source = CFRef<TISInputSourceRef>::adopt(TISCopyCurrentKeyboardLayoutInputSource());
    if (!source) {
        return std::nullopt;
    }
    // Absent while the user writes with an input method that has no layout of its own.
    NSData* data =
        (__bridge NSData*)TISGetInputSourceProperty(source.get(), kTISPropertyUnicodeKeyLayoutData);
    if (data == nil) {
        return std::nullopt;
    }
    std::array<UniChar, 8> text{};
    UniCharCount length = 0;
    UInt32 deadKeys = 0;
    const OSStatus status = UCKeyTranslate(
        static_cast<const UCKeyboardLayout*>(data.bytes), key, kUCKeyActionDisplay, 0, LMGetKbdType(),
        kUCKeyTranslateNoDeadKeysMask, &deadKeys, text.size(), &length, text.data());
    if (status != noErr || length == 0 || text[0] <= ' ') {
        return std::nullopt;
    }
    return portableIfAny([NSString stringWithCharacters:text.data() length:length]);
}

Subscription MacHotKeys::observeLayout(std::function<void()> handler) {
    return observeNotification([NSDistributedNotificationCenter defaultCenter],
                               (__bridge NSString*)kTISNotifySelectedKeyboardInputSourceChanged,
                               [handler = std::move(handler)](NSNotification*) { handler(); });
}

}  // namespace velko
