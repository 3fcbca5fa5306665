#import "Velko/mac/PageToolbar.h"

#include <string>
#include <utility>

#include "Velko/mac/Images.h"
#include "VelkoEngine/mac/Conversions.h"

namespace {

NSToolbarItemIdentifier identifierOf(std::size_t page) {
    return velko::native(std::to_string(page));
}

}  // namespace

@implementation VLKPageToolbar {
    std::vector<velko::view::Pages::Tab> _tabs;
    std::function<void(std::size_t)> _chosen;
    NSToolbar* _toolbar;
}

- (instancetype)initWithWindow:(NSWindow*)window
                          tabs:(std::vector<velko::view::Pages::Tab>)tabs
                        chosen:(std::function<void(std::size_t)>)chosen {
    self = [super init];
    if (self != nil) {
        _tabs = std::move(tabs);
        _chosen = std::move(chosen);
        _toolbar = [[NSToolbar alloc] initWithIdentifier:@"pages"];
        _toolbar.delegate = self;
        _toolbar.displayMode = NSToolbarDisplayModeIconAndLabel;
        _toolbar.allowsUserCustomization = NO;
        window.toolbarStyle = NSWindowToolbarStylePreference;
        window.toolbar = _toolbar;
    }
    return self;
}

- (BOOL)has:(const std::vector<velko::view::Pages::Tab>&)tabs {
    return tabs == _tabs;
}

- (void)select:(std::size_t)page {
    _toolbar.selectedItemIdentifier = page < _tabs.size() ? identifierOf(page) : nil;
}

- (NSArray<NSToolbarItemIdentifier>*)identifiers {
    NSMutableArray<NSToolbarItemIdentifier>* identifiers = [NSMutableArray arrayWithCapacity:_tabs.size()];
    for (std::size_t page = 0; page < _tabs.size(); ++page) {
        [identifiers addObject:identifierOf(page)];
    }
    return identifiers;
}

- (NSArray<NSToolbarItemIdentifier>*)toolbarDefaultItemIdentifiers:(NSToolbar*)toolbar {
    return [self identifiers];
}

- (NSArray<NSToolbarItemIdentifier>*)toolbarAllowedItemIdentifiers:(NSToolbar*)toolbar {
    return [self identifiers];
}

- (NSArray<NSToolbarItemIdentifier>*)toolbarSelectableItemIdentifiers:(NSToolbar*)toolbar {
    return [self identifiers];
}

- (NSToolbarItem*)toolbar:(NSToolbar*)toolbar
        itemForItemIdentifier:(NSToolbarItemIdentifier)identifier
    willBeInsertedIntoToolbar:(BOOL)flag {
    for (std::size_t page = 0; page < _tabs.size(); ++page) {
        if ([identifier isEqualToString:identifierOf(page)]) {
            NSToolbarItem* item = [[NSToolbarItem alloc] initWithItemIdentifier:identifier];
            item.label = velko::native(_tabs[page].title);
            item.image = velko::symbolImage(_tabs[page].symbol);
            item.tag = static_cast<NSInteger>(page);
            item.target = self;
            item.action = @selector(chose:);
            return item;
        }
    }
    return nil;
}

- (void)chose:(NSToolbarItem*)sender {
    const auto chosen = _chosen;
    if (chosen) {
        chosen(static_cast<std::size_t>(sender.tag));
    }
}

@end
