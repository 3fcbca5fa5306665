#include "Velko/mac/MacSelfCheck.h"

#import <AppKit/AppKit.h>
#include <crt_externs.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/mac/Images.h"
#import "Velko/mac/MacHotKeys.h"
#import "Velko/mac/MacStatusItem.h"
#import "Velko/mac/MacSurfaces.h"
#include "Velko/mac/Surroundings.h"
#import "Velko/mac/TreeDrawing.h"
#import "Velko/mac/TreeView.h"
#include "VelkoEngine/mac/Conversions.h"
#include "VelkoEngine/mac/MacPlatform.h"

namespace velko {

namespace {

/// Runs the main loop for a while, as an app does that gets events.
void pass(MainThread& mainThread, MainThread::Uptime duration) {
    NSApplication* application = [NSApplication sharedApplication];
    const auto end = mainThread.now() + duration;
    for (auto left = duration; left.count() > 0; left = end - mainThread.now()) {
        @autoreleasepool {
            NSEvent* event =
                [application nextEventMatchingMask:NSEventMaskAny
                                         untilDate:[NSDate dateWithTimeIntervalSinceNow:secondsOf(left)]
                                            inMode:NSDefaultRunLoopMode
                                           dequeue:YES];
            if (event != nil) {
                [application sendEvent:event];
            }
        }
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

/// Runs a program, and reads what it writes to either output.
std::optional<SelfCheck::Bench::ToolRun> runAndRead(std::vector<std::string> arguments) {
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0) {
        return std::nullopt;
    }
    std::vector<char*> words;
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    posix_spawn_file_actions_t files{};
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDERR_FILENO);
    posix_spawn_file_actions_addclose(&files, ends[0]);
    pid_t tool = 0;
    const bool isStarted =
        posix_spawn(&tool, words.front(), &files, nullptr, words.data(), *_NSGetEnviron()) == 0;
    posix_spawn_file_actions_destroy(&files);
    close(ends[1]);
    std::optional<SelfCheck::Bench::ToolRun> run;
    if (isStarted) {
        run.emplace();
        std::array<char, 4096> part{};
        for (ssize_t count = read(ends[0], part.data(), part.size()); count > 0;
             count = read(ends[0], part.data(), part.size())) {
            run->output.append(part.data(), static_cast<std::size_t>(count));
        }
        int status = 0;
        run->status = waitpid(tool, &status, 0) == tool && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    close(ends[0]);
    return run;
}

std::string wordsFor(NSWindow* window) {
    const Rect frame = portable(window.frame);
    return "\"" + portable(window.title) + "\" at " + SelfCheck::placeOf(frame) + ", level " +
           std::to_string(window.level) + (window.keyWindow ? ", has the keyboard" : "") +
           (window.onActiveSpace ? ", on this Space" : ", on another Space") +
           (window.screen == nil ? ", on no screen" : "");
}

class MacBench final : public SelfCheck::Bench {
 public:
    MacBench(MainThread& mainThread, AppIcons& icons)
        : item_(icons), surfaces_(mainThread, icons), drawing_(mainThread, icons) {}
    ~MacBench() override { end(); }

    [[nodiscard]] bool startHider() override {
        std::string program = portable([NSBundle mainBundle].executablePath);
        std::string check = "--self-check";
        std::string hide = "--hide";
        char* arguments[] = {program.data(), check.data(), hide.data(), nullptr};
        return hider_ == 0 &&
               posix_spawn(&hider_, program.c_str(), nullptr, nullptr, arguments, *_NSGetEnviron()) == 0;
    }
    void killHider() override { end(); }

    [[nodiscard]] StatusItem& statusItem() override { return item_; }
    [[nodiscard]] std::optional<Rect> statusItemWindow() const override { return item_.windowFrame(); }
    void closeMenu() override { item_.closeMenu(); }
    void removeStatusItem() override { item_.remove(); }

    [[nodiscard]] std::optional<std::vector<LayoutAudit::Measured>> drawTree(
        const view::Node& tree, bool isDark, const std::filesystem::path& picture) override {
        return drawing_.draw(tree, isDark, picture);
    }
    [[nodiscard]] bool hasSymbol(const std::string& name) const override {
        return [NSImage imageWithSystemSymbolName:native(name) accessibilityDescription:@""] != nil;
    }
    [[nodiscard]] Surfaces& surfaces() override { return surfaces_; }
    [[nodiscard]] std::vector<std::string> openWindows() const override {
        std::vector<std::string> lines;
        for (NSWindow* window in [NSApplication sharedApplication].windows) {
            if (window.visible) {
                lines.push_back(wordsFor(window));
            }
        }
        return lines;
    }

    [[nodiscard]] std::optional<ToolRun> runTool(std::vector<std::string> arguments) override {
        return runAndRead(std::move(arguments));
    }

 private:
    void end() {
        if (hider_ > 0) {
            kill(hider_, SIGKILL);
            waitpid(hider_, nullptr, 0);
            hider_ = 0;
        }
    }

    MacStatusItem item_;
    MacSurfaces surfaces_;
    TreeDrawing drawing_;
    pid_t hider_ = 0;
};

/// Everything that a check works on.
struct Check {
    MacPlatform platform;
    AppIcons icons;
    MacPropertyListReader propertyLists;
    MacHotKeys hotKeys;
    MacBench bench{platform.ports().mainThread, icons};
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
