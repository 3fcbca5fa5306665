#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Ports/PrivateFramework.h"

/// Values on their way across the language boundary: `portable` copies them to ours, `native` to the
/// system's. Any thread.
namespace velko {

/// Empty for nil. What has no UTF-8 form becomes "?".
[[nodiscard]] std::string portable(NSString* text);
[[nodiscard]] std::optional<std::string> portableIfAny(NSString* text);
/// Never nil: bytes that are not UTF-8 are replaced.
[[nodiscard]] NSString* native(std::string_view text);

[[nodiscard]] NSArray<NSString*>* native(const std::vector<std::string>& texts);
[[nodiscard]] NSArray<NSNumber*>* native(const std::vector<int>& numbers);

[[nodiscard]] Point portable(CGPoint point);
[[nodiscard]] Size portable(CGSize size);
[[nodiscard]] Rect portable(CGRect rect);
[[nodiscard]] CGRect native(const Rect& rect);

[[nodiscard]] FrameworkError portable(NSError* error);
[[nodiscard]] RaisedException portable(NSException* exception);

/// Nothing when the object is missing, no number, or no whole number of 64 bits.
[[nodiscard]] std::optional<std::int64_t> wholeNumber(CFTypeRef object);

}  // namespace velko
