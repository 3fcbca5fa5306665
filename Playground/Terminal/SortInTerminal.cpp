#include "Playground/Terminal/SortInTerminal.h"

#include <chrono>
#include <iostream>
#include <string>
#include <termios.h>
#include <unistd.h>
#include <vector>

#include "Playground/Terminal/LayoutFileCommands.h"
#include "Scenarios/SampleApps.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::playground {

namespace {

constexpr char backspace = '\b';
constexpr char deletion = '\x7F';   // what most terminals send for Backspace
constexpr char interrupt = '\x03';  // Control-C and Control-D, which come as keys in this mode
constexpr char endOfText = '\x04';

/// A terminal that hands over each key at once and does not show it, until the end of the scope.
class KeyByKey final : private NonCopyable {
 public:
    KeyByKey() : isTerminal_(::isatty(STDIN_FILENO) == 1 && ::tcgetattr(STDIN_FILENO, &before_) == 0) {
        if (isTerminal_) {
            termios raw = before_;
            raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG);
            ::tcsetattr(STDIN_FILENO, TCSANOW, &raw);
        }
    }
    ~KeyByKey() {
        if (isTerminal_) {
            ::tcsetattr(STDIN_FILENO, TCSANOW, &before_);
        }
    }

 private:
    termios before_{};
    bool isTerminal_;
};

void show(const SortSession& session, std::ostream& screen) {
    const SortCard& card = *session.current();
    screen << '\n'
           << session.index() + 1 << " of " << session.cards().size() << "  " << card.name << '\n'
           << "    " << name(card.suggestion.section) << "? " << describe(card.suggestion.reason) << '\n'
           << "    b bar   t tucked   u buried   Backspace back   r accept the rest   q leave unchanged\n"
           << std::flush;
}

void confirm(Section section, std::ostream& screen) {
    screen << "    -> " << name(section) << '\n';
}

}  // namespace

bool walkCards(SortSession& session, std::istream& keys, std::ostream& screen) {
    const auto choose = [&](Section section) {
        session.choose(section);
        confirm(section, screen);
    };
    std::size_t shown = session.cards().size();
    while (!session.isFinished()) {
        if (session.index() != shown) {
            show(session, screen);
            shown = session.index();
        }
        char key = 0;
        if (!keys.get(key) || key == 'q' || key == interrupt || key == endOfText) {
            return false;
        }
        switch (key) {
            case 'b': choose(Section::bar); break;
            case 't': choose(Section::tucked); break;
            case 'u': choose(Section::buried); break;
            case backspace:
            case deletion: session.back(); break;
            case 'r': session.acceptRest(); break;
            default: break;
        }
    }
    return true;
}

int sortLayoutFile(Layout layout, const std::filesystem::path& layoutFile) {
    std::vector<SortSession::App> apps;
    for (const scenarios::SampleApp& neighbour : scenarios::sampleApps()) {
        apps.push_back({.bundleID = neighbour.bundleID, .name = neighbour.name});
    }
    SortSession session({.apps = apps,
                         .lastClicked = layout.lastClicked,
                         .current = layout.sections,
                         .importSource = std::nullopt,
                         .now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()),
                         .calendar = {}});
    const KeyByKey keyByKey;
    if (!walkCards(session, std::cin, std::cout)) {
        std::cout << "\nLeft as it was.\n";
        return 0;
    }
    for (const auto& [bundleID, section] : session.result()) {
        layout.place(bundleID, section);
    }
    layout.hasCompletedSetup = true;
    if (!saveLayoutFile(layoutFile, layout)) {
        return 1;
    }
    std::cout << "\nSorted: " << session.count(Section::bar) << " in the bar, "
              << session.count(Section::tucked) << " tucked, " << session.count(Section::buried)
              << " buried.\n";
    return 0;
}

}  // namespace velko::playground
