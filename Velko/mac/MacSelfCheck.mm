#include "Velko/mac/MacSelfCheck.h"

#import <AppKit/AppKit.h>
#include <spawn.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Velko/mac/Images.h"
#import "Velko/mac/MacHotKeys.h"
#include "Velko/mac/Surroundings.h"
#import "Velko/mac/TreeView.h"
#include "VelkoEngine/mac/Conversions.h"
#include "VelkoEngine/mac/MacPlatform.h"

namespace velko {

namespace {

/// Runs the main loop for a while.
void pass(MainThread& mainThread, MainThread::Uptime duration) {
    const auto end = mainThread.now() + duration;
    for (auto left = duration; left.count() > 0; left = end - mainThread.now()) {
        CFRunLoopRunInMode(kCFRunLoopDefaultMode, secondsOf(left), false);
    }
}

/// Draws trees into a view that is in no window.
RenderingCheck::Draw offScreen(MainThread& mainThread, AppIcons& icons) {
    VLKTreeView* view = [[VLKTreeView alloc] initWithMainThread:mainThread icons:icons];
    return [view](const view::Node& tree) {
        [view show:tree];
        [view setFrameSize:[view fit]];
        [view layoutSubtreeIfNeeded];
        return [view drawn];
    };
}

class MacBench final : public SelfCheck::Bench {
 public:
    ~MacBench() override { end(); }

    [[nodiscard]] bool startHider() override {
        std::string program = portable([NSBundle mainBundle].executablePath);
        std::string check = "--self-check";
        std::string hide = "--hide";
        char* arguments[] = {program.data(), check.data(), hide.data(), nullptr};
        return hider_ == 0 &&
               posix_spawn(&hider_, program.c_str(), nullptr, nullptr, arguments, nullptr) == 0;
    }
    void killHider() override { end(); }

 private:
    void end() {
        if (hider_ > 0) {
            kill(hider_, SIGKILL);
            waitpid(hider_, nullptr, 0);
            hider_ = 0;
        }
    }

    pid_t hider_ = 0;
};

/// Everything that a check works on.
struct Check {
    MacPlatform platform;
    AppIcons icons;
    MacPropertyListReader propertyLists;
    MacHotKeys hotKeys;
    MacBench bench;
    SelfCheck::Subject subject{
        .platform = platform.ports(),
        .propertyLists = propertyLists,
        .hotKeys = hotKeys,
        .info = Surroundings::appInfo(),
        .layoutFile = Surroundings::layoutFile(),
        .logFile = Surroundings::logFile(),
        .pass = [this](MainThread::Uptime duration) { pass(platform.ports().mainThread, duration); },
        .draw = offScreen(platform.ports().mainThread, icons),
        .bench = &bench,
    };
};

int check(const SelfCheck::Command& command) {
    // Registers this process with the system, as it happens when the app runs.
    [[NSApplication sharedApplication] finishLaunching];
    Check check;
    const int status = command.kind == SelfCheck::Command::Kind::hide
                           ? SelfCheck::hideForOthers(check.subject)
                           : SelfCheck::run(check.subject, command, [](const std::string& line) {
                                 std::puts(line.c_str());
                                 std::fflush(stdout);
                             });
    // A read of an app that hangs may still be going on, and needs the platform.
    std::_Exit(status);
}

}  // namespace

int runSelfCheck(const SelfCheck::Command& command) {
    switch (command.kind) {
        case SelfCheck::Command::Kind::check:
        case SelfCheck::Command::Kind::hide:
            return check(command);
        case SelfCheck::Command::Kind::dump: {
            MacPlatform platform;
            std::fputs(SelfCheck::dump(platform.ports(), command.pid).c_str(), stdout);
            return 0;
        }
        case SelfCheck::Command::Kind::runApp:
        case SelfCheck::Command::Kind::usage:
            break;
    }
    std::fputs(SelfCheck::usage().c_str(), stderr);
    return 2;
}

}  // namespace velko
