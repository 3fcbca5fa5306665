#include "Playground/Terminal/TerminalView.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <ostream>
#include <ranges>
#include <thread>
#include <utility>
#include <vector>

#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "VelkoEngine/Text/Text.h"

namespace velko::playground {

namespace {

constexpr std::size_t mostLogLines = 24;  ///< how many lines of the log are shown at once
constexpr std::size_t widestLogLine = 150;
constexpr auto frame = std::chrono::milliseconds(50);

/// A line of the log, made safe for the terminal and cut if it is too long for one row.
std::string shortened(const std::string& line) {
    return printable(line.substr(0, widestLogLine)) + (line.size() <= widestLogLine ? "" : "…");
}

}  // namespace

TerminalView::TerminalView(scenarios::World& world, std::ostream& screen, Manner manner)
    : world_(world), screen_(screen), manner_(std::move(manner)) {
    world_.mac().onMenuBarChange = [this] { hasBarChanged_ = true; };
    world_.passTime = [this](MainThread::Uptime duration) {
        if (manner_.speed) {
            passInRealTime(duration, *manner_.speed);
        } else {
            pass(duration);
        }
    };
}

void TerminalView::begin(const script::Step& step) {
    if (step.verb != script::Verb::say) {
        hasBegun_ = true;
        return;
    }
    showOutcome();
    screen_ << (manner_.isBold ? "\n\033[1m" : "\n") << printable(step.text.value_or(""))
            << (manner_.isBold ? "\033[0m\n" : "\n") << std::flush;
}

void TerminalView::showOutcome() {
    if (std::exchange(hasBegun_, false)) {
        if (!manner_.speed || hasBarChanged_) {
            showBar();
        }
        showLog();
    }
}

void TerminalView::pass(MainThread::Uptime duration) {
    constexpr MainThread::Uptime slice = std::chrono::hours(1);
    for (MainThread::Uptime left = duration;; left -= slice) {
        world_.mac().advance(std::min(left, slice));
        if (left <= slice || isOver()) {
            return;
        }
    }
}

void TerminalView::passInRealTime(MainThread::Uptime duration, std::int64_t speed) {
    const MainThread::Uptime slice = frame * speed;
    for (MainThread::Uptime left = duration; left > MainThread::Uptime(0) && !isOver(); left -= slice) {
        const auto next = std::min(left, slice);
        world_.mac().advance(next);
        if (hasBarChanged_) {
            showBar();
        }
        showLog();
        std::this_thread::sleep_for(next / speed);
    }
}

void TerminalView::showBar() {
    hasBarChanged_ = false;
    for (const auto line : world_.mac().menuBarPicture() | std::views::split('\n')) {
        screen_ << printable({line.begin(), line.end()}) << '\n';
    }
    screen_ << std::flush;
}

void TerminalView::showLog() {
    std::ifstream file(world_.log().file(), std::ios::binary);
    file.seekg(static_cast<std::streamoff>(logBytesShown_));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        logBytesShown_ += line.size() + 1;
        lines.push_back(shortened(line));
    }
    const std::size_t shown = lines.size() <= mostLogLines ? lines.size() : mostLogLines / 2;
    const auto print = [&](std::size_t from, std::size_t to) {
        for (; from < to; ++from) {
            screen_ << "    " << lines[from] << '\n';
        }
    };
    print(0, shown);
    if (shown < lines.size()) {
        screen_ << "    (" << lines.size() - 2 * shown << " lines more)\n";
        print(lines.size() - shown, lines.size());
    }
    screen_ << std::flush;
}

void TerminalView::showSummary() {
    const SimulatedMac::Cost cost = world_.mac().cost();
    const auto hours = std::chrono::duration<double, std::ratio<3600>>(world_.mac().mainThread.now()).count();
    if (world_.velko() != nullptr) {
        screen_ << "\nPlan in force: " << printable(describe(world_.velko()->engine().current())) << '\n';
    }
    screen_ << "\nIn " << std::round(hours * 10) / 10 << " hours awake it cost: " << cost.wakeUps
            << " wake-ups, " << cost.accessibilityMessages << " Accessibility messages, " << cost.engineCalls
            << " engine calls, " << logBytesShown_ << " bytes of log\n";
}

}  // namespace velko::playground
