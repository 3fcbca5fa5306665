#import "VelkoEngine/mac/Conversions.h"

#include "VelkoEngine/Text/Text.h"

namespace velko {

std::string portable(NSString* text) {
    if (text == nil) {
        return {};
    }
    const auto string = (__bridge CFStringRef)text;
    const CFRange all{0, CFStringGetLength(string)};
    CFIndex size = 0;
    CFStringGetBytes(string, all, kCFStringEncodingUTF8, '?', false, nullptr, 0, &size);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    CFStringGetBytes(string, all, kCFStringEncodingUTF8, '?', false, reinterpret_cast<UInt8*>(bytes.data()),
                     size, nullptr);
    return bytes;
}

std::optional<std::string> portableIfAny(NSString* text) {
    return text == nil ? std::nullopt : std::optional(portable(text));
}

NSString* native(std::string_view text) {
    const std::string bytes = repairedUtf8(text);
    return (__bridge_transfer NSString*)CFStringCreateWithBytes(
        kCFAllocatorDefault, reinterpret_cast<const UInt8*>(bytes.data()), static_cast<CFIndex>(bytes.size()),
        kCFStringEncodingUTF8, false);
}

NSArray<NSString*>* native(const std::vector<std::string>& texts) {
    NSMutableArray<NSString*>* array = [NSMutableArray arrayWithCapacity:texts.size()];
    for (const std::string& text : texts) {
        [array addObject:native(text)];
    }
    return array;
}

NSArray<NSNumber*>* native(const std::vector<int>& numbers) {
    NSMutableArray<NSNumber*>* array = [NSMutableArray arrayWithCapacity:numbers.size()];
    for (const int number : numbers) {
        [array addObject:@(number)];
    }
    return array;
}

Point portable(CGPoint point) {
    return {.x = point.x, .y = point.y};
}

Size portable(CGSize size) {
    return {.width = size.width, .height = size.height};
}

Rect portable(CGRect rect) {
    return {.x = rect.origin.x, .y = rect.origin.y, .width = rect.size.width, .height = rect.size.height};
}

CGRect native(const Rect& rect) {
    return {.origin = {.x = rect.x, .y = rect.y}, .size = {.width = rect.width, .height = rect.height}};
}

FrameworkError portable(NSError* error) {
    return {.domain = portable(error.domain),
            .code = error.code,
            .description = portable(error.localizedDescription)};
}

RaisedException portable(NSException* exception) {
    return {.name = portable(exception.name), .reason = portable(exception.reason)};
}

std::optional<std::int64_t> wholeNumber(CFTypeRef object) {
    std::int64_t value = 0;
    if (object == nullptr || CFGetTypeID(object) != CFNumberGetTypeID() ||
        !CFNumberGetValue(static_cast<CFNumberRef>(object), kCFNumberSInt64Type, &value)) {
        return std::nullopt;
    }
    return value;
}

}  // namespace velko
