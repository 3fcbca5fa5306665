#include "Playground/Terminal/ScenarioPlayer.h"

#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "Playground/Terminal/Folders.h"
#include "Playground/Terminal/LayoutFileCommands.h"
#include "Playground/Terminal/Terminal.h"
#include "Playground/Terminal/TerminalView.h"
#include "Scenarios/Language/Script.h"
#include "Scenarios/Week.h"
#include "Scenarios/World.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko::playground {

namespace {

constexpr std::string_view unreadableLayout = R"(
say "The menu bar before Velko"
launch neighbours
say "Velko can't read this layout, so it hides nothing and leaves the file as it is"
velko start
wait 3 s
)";

struct Piece {
    std::string title;  ///< the name of the scenario in messages about mistakes
    std::string text;
    std::optional<std::filesystem::path> layoutFile;
    bool isFirstRun = false;  ///< whether to reset the layout to the day on which Velko came
};

int refuse(int status, const std::string& why) {
    std::cerr << why << '\n';
    return status;
}

/// The app that is new in the course of the week.
constexpr auto newcomer = "com.example.Skyline";

/// Resets a layout file to the day on which Velko came. It keeps places and settings, and loses what Velko
/// has learnt and asked since: the week tells that again. Returns whether it worked.
bool goBackToTheFirstDay(const std::filesystem::path& layoutFile) {
    const LayoutStore store(layoutFile);
    const auto loaded = store.load();
    const std::optional<Layout> layout = loaded ? *loaded : std::nullopt;
    if (!layout) {
        return false;
    }
    Layout first{
        .sections = layout->sections, .newIconDefault = layout->newIconDefault, .reveal = layout->reveal};
    Switches::copy(LayoutExport::of(*layout), first);
    first.sections.erase(newcomer);
    return store.save(first).has_value();
}

/// Copies a layout file. Velko does not read files that are too large, so for those it makes a file of that
/// size without content.
std::error_code copyLayout(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code error;
    const bool isTooLarge = std::filesystem::file_size(from, error) > AtomicFile::largest;
    if (!error && isTooLarge) {
        std::ofstream(to, std::ios::binary).flush();
        std::filesystem::resize_file(to, AtomicFile::largest + 1, error);
    } else if (!error) {
        std::filesystem::copy_file(from, to, error);
    }
    return error;
}

std::string blamed(const Piece& piece, const script::Mistake& mistake) {
    return piece.title + ":" + std::to_string(mistake.line) + ": " + mistake.what;
}

int play(const Piece& piece, std::optional<std::int64_t> speed) {
    const auto scenario = script::read(piece.text);
    if (!scenario) {
        return refuse(2, blamed(piece, scenario.error()));
    }
    // Declared before the folder, so that the folder is deleted before a signal ends the program.
    const DeferredSignals signals;
    const auto folder = ScratchFolder::create();
    if (!folder) {
        return refuse(1, "There is no room for temporary files.");
    }
    scenarios::World world(folder->path());
    if (piece.layoutFile) {
        if (const auto error = copyLayout(*piece.layoutFile, world.layoutFile())) {
            return refuse(1, piece.layoutFile->string() + ": " + error.message());
        }
    }
    if (piece.isFirstRun && !goBackToTheFirstDay(world.layoutFile())) {
        return refuse(1, "The layout can't be copied.");
    }
    const auto isOver = [&signals] { return signals.hasCome() || !std::cout; };
    TerminalView show(world, std::cout,
                      {.isBold = ::isatty(STDOUT_FILENO) == 1, .speed = speed, .isOver = isOver});
    const auto played = script::play(*scenario, world, [&](const script::Step& step) {
        show.begin(step);
        return !isOver();
    });
    if (isOver()) {
        return 1;
    }
    show.showOutcome();
    if (!played) {
        std::cout << std::flush;
        return refuse(1, blamed(piece, played.error()));
    }
    show.showSummary();
    return 0;
}

}  // namespace

int playWeek(const std::filesystem::path& layoutFile, bool mayCreate, std::optional<std::int64_t> speed) {
    const LayoutStore store(layoutFile);
    const auto loaded = store.load();
    if (loaded && !*loaded && !loadLayoutFile(layoutFile, mayCreate)) {
        return 1;
    }
    std::cout << "Layout: " << layoutFile.string() << " (the week is played on a copy)\n";
    const std::string title = "week.scenario";
    if (loaded) {
        return play({.title = title,
                     .text = std::string(scenarios::weekScenario()),
                     .layoutFile = layoutFile,
                     .isFirstRun = true},
                    speed);
    }
    std::cout << loaded.error().description << '\n';
    return play({.title = title, .text = std::string(unreadableLayout), .layoutFile = layoutFile}, speed);
}

int playFile(const std::filesystem::path& file, const std::optional<std::filesystem::path>& layoutFile,
             std::optional<std::int64_t> speed) {
    const auto text = readFile(file);
    if (!text) {
        return refuse(2, text.error());
    }
    return play({.title = file.string(), .text = *text, .layoutFile = layoutFile}, speed);
}

}  // namespace velko::playground
