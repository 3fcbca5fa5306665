#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include "Playground/Serving/Server.h"
#include "Playground/Terminal/Folders.h"
#include "Playground/Terminal/LayoutFileCommands.h"
#include "Playground/Terminal/Options.h"
#include "Playground/Terminal/ScenarioPlayer.h"
#include "Velko/Commands/CommandClient.h"
#include "Velko/Commands/Grammar.h"
#include "VelkoCore/Layout/LayoutStore.h"

namespace {

using namespace velko::playground;

bool changesLayout(Options::Command command) {
    return command == Options::Command::importLayout || command == Options::Command::sort;
}

int onLayout(const Options& options, const std::filesystem::path& layoutFile) {
    if (options.command == Options::Command::playWeek) {
        return playWeek(layoutFile, !options.layout, options.speed);
    }
    velko::FolderLock lock = velko::LayoutStore(layoutFile).folderLock();
    auto layout = loadLayoutFile(layoutFile, !options.layout);
    if (layout && changesLayout(options.command)) {
        // Nobody else can change the file now, but somebody may have changed it a moment ago: so it is read
        // again.
        layout = claim(lock) ? loadLayoutFile(layoutFile, false) : std::nullopt;
    }
    if (!layout) {
        return 1;
    }
    switch (options.command) {
        case Options::Command::exportLayout: return exportLayoutFile(*layout, options.path);
        case Options::Command::importLayout:
            return importIntoLayoutFile(*std::move(layout), layoutFile, options.path);
        case Options::Command::importFrom: return tellWhatOthersHave(*layout, options.path);
        case Options::Command::sort: return sortLayoutFile(*std::move(layout), layoutFile);
        case Options::Command::servePage:
        case Options::Command::playWeek:
        case Options::Command::playScript:
        case Options::Command::help: break;
    }
    return 0;
}

/// The commands that use the folder that is kept between runs.
int inHome(const Options& options, const char* program) {
    const auto home = options.home ? options.home : homeFolder();
    if (!home) {
        std::cerr << "There is no folder to keep things in: HOME is not set. Name one with --home.\n";
        return 1;
    }
    if (options.command == Options::Command::servePage) {
        return velko::web::serve({.home = *home,
                                  .port = options.port,
                                  .mayOpen = options.mayOpen,
                                  .caller = std::filesystem::absolute(program).parent_path() / "velko"});
    }
    return prepareFolder(*home) ? onLayout(options, *home / "layout.json") : 1;
}

/// Works the Velko of the playground that runs.
int giveCommand(const std::vector<std::string>& arguments) {
    const auto named = velko::commands::socketInEnvironment();
    const auto home = homeFolder();
    if (!named && !home) {
        std::cerr << "velko: HOME is not set, and VELKO_SOCKET neither.\n";
        return 1;
    }
    std::error_code error;
    return velko::commands::runCommandLine(arguments,
                                           {.socket = named ? *named : velko::web::commandSocketIn(*home),
                                            .folder = std::filesystem::current_path(error),
                                            .version = VELKO_VERSION,
                                            .out = velko::commands::printTo(stdout),
                                            .error = velko::commands::printTo(stderr)});
}

int run(const std::vector<std::string>& arguments, const char* program) {
    if (velko::commands::isCommandLine(program, arguments)) {
        return giveCommand(arguments);
    }
    const auto options = parseOptions(arguments);
    if (!options) {
        std::cerr << options.error() << '\n';
        return 2;
    }
    if (options->command == Options::Command::help) {
        std::cout << helpText();
        return 0;
    }
    if (options->command == Options::Command::playScript) {
        return playFile(options->path, options->layout, options->speed);
    }
    if (const auto& layout = options->layout) {
        return onLayout(*options, *layout);
    }
    return inHome(*options, program);
}

}  // namespace

int main(int argc, char** argv) {
    // Without this, a write beyond the limit for file sizes would end the program. Now it is an error like
    // others.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return run({argv + std::min(argc, 1), argv + argc}, argc > 0 ? argv[0] : "");
    } catch (const std::exception& error) {
        std::cerr << "The playground stopped: " << error.what() << '\n';
        return 1;
    }
}
