#import "Velko/mac/MacPasteboard.h"

#import <AppKit/AppKit.h>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

void MacPasteboard::setText(const std::string& text) {
    NSPasteboard* pasteboard = [NSPasteboard generalPasteboard];
    [pasteboard clearContents];
    [pasteboard setString:native(text) forType:NSPasteboardTypeString];
}

}  // namespace velko
