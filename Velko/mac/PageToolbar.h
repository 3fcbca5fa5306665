#pragma once

#import <AppKit/AppKit.h>

#include <cstddef>
#include <functional>
#include <vector>

#include "Velko/View/Node.h"

/// The pages of a window as the items of its toolbar, as settings have them.
@interface VLKPageToolbar : NSObject <NSToolbarDelegate>
/// Puts them into the window. `chosen` is called with the index of the page that the user chooses.
- (instancetype)initWithWindow:(NSWindow*)window
                          tabs:(std::vector<velko::view::Pages::Tab>)tabs
                        chosen:(std::function<void(std::size_t)>)chosen;
/// Whether it shows exactly these pages.
- (BOOL)has:(const std::vector<velko::view::Pages::Tab>&)tabs;
/// Marks the page that is open.
- (void)select:(std::size_t)page;
@end
