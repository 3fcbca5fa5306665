#import "Velko/mac/NewIn27.h"

#import <objc/runtime.h>

namespace velko::NewIn27 {

namespace {

constexpr int imageVisible = 1;  // NSMenuItemImageVisibilityVisible
constexpr int roleTabs = 1;      // NSSegmentedControlRoleTabs

void set(NSObject* object, SEL setter, NSString* property, int value) {
    if ([object respondsToSelector:setter]) {
        [object setValue:@(value) forKey:property];
    }
}

}  // namespace

void showImage(NSMenuItem* item) {
    set(item, sel_registerName("setPreferredImageVisibility:"), @"preferredImageVisibility", imageVisible);
}

void actAsTabs(NSSegmentedControl* control) {
    set(control, sel_registerName("setRole:"), @"role", roleTabs);
}

}  // namespace velko::NewIn27
