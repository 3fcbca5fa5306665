#include <csignal>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "Playground/KeptLayout.h"
#include "Playground/Options.h"
#include "Playground/SortInTerminal.h"
#include "Playground/Theatre.h"
#include "Playground/Web/Serve.h"

namespace {

using namespace velko::playground;

int onLayout(const Options& options, const std::filesystem::path& layoutFile) {
    auto layout = loadKept(layoutFile, !options.layout);
    if (!layout) {
        return 1;
    }
    switch (options.command) {
        case Options::Command::exportLayout: return exportKept(*layout, options.path);
        case Options::Command::importLayout:
            return importIntoKept(*std::move(layout), layoutFile, options.path);
        case Options::Command::importFrom: return tellWhatOthersHave(*layout, options.path);
        case Options::Command::sort: return sortKept(*std::move(layout), layoutFile);
        case Options::Command::servePage:
        case Options::Command::playWeek:
        case Options::Command::playScript:
        case Options::Command::help: break;
    }
    return 0;
}

int run(const std::vector<std::string>& arguments) {
    const auto options = parseOptions(arguments);
    if (!options) {
        std::cerr << options.error() << '\n';
        return 2;
    }
    if (options->command == Options::Command::help) {
        std::cout << helpText();
        return 0;
    }
    const std::filesystem::path home = options->home.value_or(keptFolder());
    if (options->command == Options::Command::servePage) {
        return velko::web::serve({.home = home, .port = options->port, .mayOpen = options->mayOpen});
    }
    const std::filesystem::path layoutFile = options->layout.value_or(home / "layout.json");
    if (options->command == Options::Command::playWeek) {
        return playWeek(layoutFile, !options->layout, options->speed);
    }
    if (options->command == Options::Command::playScript) {
        return playFile(options->path, options->layout, options->speed);
    }
    return onLayout(*options, layoutFile);
}

}  // namespace

int main(int argc, char** argv) {
    // A file that may not grow any more is an error like others, which is told.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << "The playground stopped: " << error.what() << '\n';
        return 1;
    }
}
