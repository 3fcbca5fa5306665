// What Velko calls of Core Services, which Carbon brings with it, declared for the cross build. A build on a
// Mac uses Apple's own.
#pragma once

#include <MacTypes.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { kUCKeyActionDisplay = 3 };
enum { kUCKeyTranslateNoDeadKeysMask = 1 };

int32_t UCKeyTranslate(const struct UCKeyboardLayout* layout, uint16_t keyCode, uint16_t action,
                       uint32_t modifiers, uint32_t keyboardType, uint32_t options, uint32_t* deadKeys,
                       UniCharCount capacity, UniCharCount* length, uint16_t* text);

#ifdef __cplusplus
}
#endif
