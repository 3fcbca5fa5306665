#import "Velko/mac/MacDialogs.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#include <functional>
#include <memory>
#include <utility>

#import "Velko/mac/RunLoop.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

/// A panel or question that waits for the user's answer.
template <class Answer>
class Waiting final : public Task::Handle {
 public:
    explicit Waiting(std::function<void(Answer)> answered) : answered_(std::move(answered)) {}

    void cancel() noexcept override { answered_ = nullptr; }
    [[nodiscard]] bool isPending() const noexcept override { return static_cast<bool>(answered_); }

    void answer(Answer answer) {
        if (const auto answered = std::exchange(answered_, nullptr)) {
            answered(std::move(answer));
        }
    }

 private:
    std::function<void(Answer)> answered_;
};

NSArray<UTType*>* contentTypes(const Dialogs::FileType& type) {
    NSMutableArray<UTType*>* types = [NSMutableArray arrayWithCapacity:1];
    [types addObject:[UTType exportedTypeWithIdentifier:native(type.identifier) conformingToType:UTTypeJSON]];
    return types;
}

/// Velko may have no window in front, so it has to come to the front first.
void runModal(NSAlert* box, void (^ended)(NSModalResponse)) {
    onMainRunLoop(^{
      [[NSApplication sharedApplication] activate];
      ended([box runModal]);
    });
}

NSAlert* makeAlert(const std::string& title, const std::string& message) {
    NSAlert* box = [[NSAlert alloc] init];
    box.messageText = native(title);
    box.informativeText = native(message);
    return box;
}

Task open(NSSavePanel* panel, Dialogs::Chosen chosen) {
    const auto waiting = std::make_shared<Waiting<std::optional<std::filesystem::path>>>(std::move(chosen));
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
    runModal(makeAlert(alert.title, alert.message), ^(NSModalResponse){
             });
}

Task MacDialogs::ask(const Question& question, Answered answered) {
    const auto waiting = std::make_shared<Waiting<bool>>(std::move(answered));
    NSAlert* box = makeAlert(question.title, question.message);
    [box addButtonWithTitle:native(question.confirm)];
    // By itself the system lets Escape press the second button only if that is called "Cancel".
    [box addButtonWithTitle:native(question.cancel)].keyEquivalent = @"\033";
    runModal(box, ^(NSModalResponse response) {
      waiting->answer(response == NSAlertFirstButtonReturn);
    });
    return Task(waiting);
}

}  // namespace velko
