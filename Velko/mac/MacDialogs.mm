#import "Velko/mac/MacDialogs.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#include <memory>
#include <utility>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

/// An open panel that waits for the user.
class Waiting final : public Task::Handle {
 public:
    explicit Waiting(Dialogs::Chosen chosen) : chosen_(std::move(chosen)) {}

    void cancel() noexcept override { chosen_ = nullptr; }
    [[nodiscard]] bool isPending() const noexcept override { return static_cast<bool>(chosen_); }

    void answer(std::optional<std::filesystem::path> file) {
        if (const auto chosen = std::exchange(chosen_, nullptr)) {
            chosen(std::move(file));
        }
    }

 private:
    Dialogs::Chosen chosen_;
};

NSArray<UTType*>* contentTypes(const Dialogs::FileType& type) {
    NSMutableArray<UTType*>* types = [NSMutableArray arrayWithCapacity:1];
    [types addObject:[UTType exportedTypeWithIdentifier:native(type.identifier) conformingToType:UTTypeJSON]];
    return types;
}

/// Velko has no windows of its own in front, so it has to come forward first.
Task open(NSSavePanel* panel, Dialogs::Chosen chosen) {
    const auto waiting = std::make_shared<Waiting>(std::move(chosen));
    [[NSApplication sharedApplication] activate];
    [panel beginWithCompletionHandler:^(NSModalResponse response) {
      if (response == NSModalResponseOK) {
          waiting->answer(std::filesystem::path(portable(panel.URL.path)));
      } else {
          waiting->answer(std::nullopt);
      }
    }];
    return Task(waiting);
}

}  // namespace

Task MacDialogs::chooseWhereToSave(const SavePanel& panel, Chosen chosen) {
    NSSavePanel* save = [NSSavePanel savePanel];
    save.title = native(panel.title);
    save.nameFieldStringValue = native(panel.suggestedName);
    save.allowedContentTypes = contentTypes(panel.type);
    return open(save, std::move(chosen));
}

Task MacDialogs::chooseFileToOpen(const OpenPanel& panel, Chosen chosen) {
    NSOpenPanel* file = [NSOpenPanel openPanel];
    file.title = native(panel.title);
    file.message = native(panel.message);
    file.allowedContentTypes = contentTypes(panel.type);
    return open(file, std::move(chosen));
}

void MacDialogs::alert(const Alert& alert) {
    NSAlert* box = [[NSAlert alloc] init];
    box.messageText = native(alert.title);
    box.informativeText = native(alert.message);
    // From the run loop itself: amid a piece of our work, the box would hold up all the rest.
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      [[NSApplication sharedApplication] activate];
      [box runModal];
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace velko
