#import <Foundation/Foundation.h>

#include <chrono>
#include <cmath>
#include <optional>

#include "VelkoEngine/mac/Conversions.h"
#import "VelkoEngine/mac/MacPlatform.h"

namespace velko {

namespace {

PropertyList portable(id object);

/// Whole numbers that do not fit become reals.
PropertyList portableNumber(CFNumberRef number) {
    const auto whole = CFNumberIsFloatType(number) ? std::nullopt : wholeNumber(number);
    if (whole) {
        return {*whole};
    }
    double real = 0;
    CFNumberGetValue(number, kCFNumberDoubleType, &real);
    return {real};
}

PropertyList portableDate(NSDate* date) {
    const double seconds = std::floor(date.timeIntervalSince1970);
    constexpr double farthest = 1e12;  // tens of thousands of years; the test below also keeps out NaN
    if (!(std::abs(seconds) < farthest)) {
        return {};
    }
    return {Date(std::chrono::seconds(static_cast<std::int64_t>(seconds)))};
}

PropertyList portableArray(NSArray* objects) {
    PropertyList::Array array;
    array.reserve(objects.count);
    for (id object in objects) {
        array.push_back(portable(object));
    }
    return {std::move(array)};
}

PropertyList portableDictionary(NSDictionary<NSString*, id>* objects) {
    PropertyList::Dictionary dictionary;
    for (NSString* key in objects) {
        dictionary.emplace(velko::portable(key), portable(objects[key]));
    }
    return {std::move(dictionary)};
}

PropertyList portableData(NSData* data) {
    const auto* const bytes = static_cast<const std::byte*>(data.bytes);
    return {PropertyList::Data(bytes, bytes + data.length)};
}

PropertyList portable(id object) {
    const auto reference = (__bridge CFTypeRef)object;
    const CFTypeID type = CFGetTypeID(reference);
    if (type == CFBooleanGetTypeID()) {
        return {CFBooleanGetValue(static_cast<CFBooleanRef>(reference)) != 0};
    }
    if (type == CFNumberGetTypeID()) {
        return portableNumber(static_cast<CFNumberRef>(reference));
    }
    if ([object isKindOfClass:[NSString class]]) {
        return {velko::portable(static_cast<NSString*>(object))};
    }
    if ([object isKindOfClass:[NSData class]]) {
        return portableData(object);
    }
    if ([object isKindOfClass:[NSDate class]]) {
        return portableDate(object);
    }
    if ([object isKindOfClass:[NSArray class]]) {
        return portableArray(object);
    }
    if ([object isKindOfClass:[NSDictionary class]]) {
        return portableDictionary(object);
    }
    return {};
}

}  // namespace

std::expected<PropertyList, PropertyListError> MacPropertyListReader::read(
    std::span<const std::byte> bytes) const {
    @autoreleasepool {
        NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        id object = [NSPropertyListSerialization propertyListWithData:data
                                                              options:NSPropertyListImmutable
                                                               format:nullptr
                                                                error:nullptr];
        if (object == nil) {
            return std::unexpected(PropertyListError::malformed);
        }
        return portable(object);
    }
}

}  // namespace velko
