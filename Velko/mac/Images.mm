#import "Velko/mac/Images.h"

#include <vector>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

NSImage* lookUp(NSString* identifier) {
    NSRunningApplication* running =
        [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier].firstObject;
    if (running.icon != nil) {
        return running.icon;
    }
    NSWorkspace* workspace = [NSWorkspace sharedWorkspace];
    NSString* path = [workspace URLForApplicationWithBundleIdentifier:identifier].path;
    return path == nil ? nil : [workspace iconForFile:path];
}

}  // namespace

NSImage* symbolImage(const std::string& name, const std::string& description) {
    return name.empty() ? nil
                        : [NSImage imageWithSystemSymbolName:native(name)
                                    accessibilityDescription:description.empty() ? nil : native(description)];
}

NSImage* AppIcons::icon(const BundleID& bundleID, double points) {
    auto found = found_.find(bundleID);
    if (found == found_.end()) {
        NSImage* image = lookUp(native(bundleID));
        if (image != nil) {
            found = found_.emplace(bundleID, image).first;
        }
    }
    // Others share the image, but each wants it in a size of their own.
    NSImage* icon = found != found_.end() ? [found->second copy] : symbolImage("app.dashed");
    icon.size = {.width = points, .height = points};
    return icon;
}

}  // namespace velko

namespace velko::Painting {

namespace {

NSPoint native(Point point) {
    return {.x = point.x, .y = point.y};
}

NSBezierPath* bezierPath(const view::Path& path) {
    using Kind = view::PathCommand::Kind;
    NSBezierPath* result = [NSBezierPath bezierPath];
    bool hasPoint = false;
    for (const view::PathCommand& command : path) {
        // A line without a starting point would raise an exception.
        if (!hasPoint || command.kind == Kind::moveTo) {
            [result moveToPoint:native(command.to)];
            hasPoint = true;
        } else if (command.kind == Kind::lineTo) {
            [result lineToPoint:native(command.to)];
        } else if (command.kind == Kind::curveTo) {
            [result curveToPoint:native(command.to)
                   controlPoint1:native(command.control1)
                   controlPoint2:native(command.control2)];
        } else {
            [result closePath];
        }
    }
    return result;
}

void paint(const view::Shape& shape, NSColor* ink) {
    NSColor* color = shape.opacity < 1 ? [ink colorWithAlphaComponent:shape.opacity] : ink;
    NSBezierPath* path = bezierPath(shape.path);
    if (shape.strokeWidth > 0) {
        path.lineWidth = shape.strokeWidth;
        path.lineCapStyle = NSLineCapStyleRound;
        path.lineJoinStyle = NSLineJoinStyleRound;
        [color setStroke];
        [path stroke];
    } else {
        [color setFill];
        [path fill];
    }
}

}  // namespace

NSColor* color(view::Ink ink) {
    switch (ink) {
        case view::Ink::label:
            return [NSColor labelColor];
        case view::Ink::accent:
            return [NSColor controlAccentColor];
        case view::Ink::warning:
            return [NSColor systemOrangeColor];
        case view::Ink::wood:
            return [NSColor colorWithSRGBRed:0.62 green:0.41 blue:0.24 alpha:1];
        case view::Ink::straw:
            return [NSColor colorWithSRGBRed:0.91 green:0.72 blue:0.33 alpha:1];
        case view::Ink::soap:
            return [NSColor colorWithSRGBRed:0.47 green:0.74 blue:0.93 alpha:1];
        case view::Ink::sparkle:
            return [NSColor colorWithSRGBRed:0.98 green:0.80 blue:0.25 alpha:1];
    }
    return [NSColor labelColor];
}

void paint(const view::Drawing& drawing) {
    for (const view::Shape& shape : drawing.shapes) {
        paint(shape, color(shape.ink));
    }
}

NSImage* templateImage(const view::Drawing& drawing) {
    // The image calls the handler later, and as often as it likes.
    const std::vector<view::Shape> shapes = drawing.shapes;
    const NSSize size{.width = drawing.size.width, .height = drawing.size.height};
    NSImage* image = [NSImage imageWithSize:size
                                    flipped:YES
                             drawingHandler:^BOOL(NSRect) {
                               for (const view::Shape& shape : shapes) {
                                   paint(shape, [NSColor blackColor]);
                               }
                               return YES;
                             }];
    [image setTemplate:YES];
    return image;
}

}  // namespace velko::Painting
