#include <charconv>
#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "tests/Soak/Kills.h"
#include "tests/Soak/Shrink.h"
#include "tests/Soak/Walk.h"

namespace {

struct Request {
    std::uint64_t seeds = 0;
    std::uint64_t from = 1;
    std::uint64_t hours = 2;
    std::filesystem::path logs{};  ///< the folder for the walks' logs; empty: no logs are written
};

bool read(std::string_view text, std::uint64_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number < 1'000'000'000;
}

std::optional<Request> requestOf(const std::vector<std::string>& arguments) {
    Request request;
    if (arguments.size() % 2 != 1 || !read(arguments.front(), request.seeds)) {
        return std::nullopt;
    }
    for (std::size_t at = 1; at < arguments.size(); at += 2) {
        if (arguments[at] == "--logs") {
            request.logs = arguments[at + 1];
            continue;
        }
        const bool isGood = (arguments[at] == "--from" && read(arguments[at + 1], request.from)) ||
                            (arguments[at] == "--hours" && read(arguments[at + 1], request.hours));
        if (!isGood) {
            return std::nullopt;
        }
    }
    return request;
}

/// Writes a walk's log to a file, so that two builds can be compared.
void keepLog(const std::filesystem::path& folder, std::uint64_t seed, const std::vector<std::string>& log) {
    std::ofstream file(folder / ("seed-" + std::to_string(seed) + ".log"));
    for (const std::string& line : log) {
        file << line << '\n';
    }
}

/// Makes walks, one for each seed, until one fails.
int soak(const Request& request) {
    std::size_t steps = 0;
    const auto started = std::chrono::steady_clock::now();
    for (std::uint64_t seed = request.from; seed < request.from + request.seeds; ++seed) {
        const auto outcome = velko::soak::walk(seed, std::chrono::hours(request.hours));
        steps += outcome.steps.size();
        if (!request.logs.empty()) {
            keepLog(request.logs, seed, outcome.log);
        }
        if (outcome.breach) {
            std::cout << "Seed " << seed << " fails: " << *outcome.breach << '\n' << std::flush;
            std::cout << velko::soak::report(seed, outcome);
            return 1;
        }
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - started;
    std::cout << request.seeds << " seeds from " << request.from << ", " << request.seeds * request.hours
              << " simulated hours, " << steps << " steps in " << took.count() << " s, "
              << static_cast<double>(steps) / took.count() << " steps per second: all holds\n";
    return 0;
}

/// Kills Velko so many times, until something is not whole afterwards.
int kill(std::uint64_t kills) {
    const auto started = std::chrono::steady_clock::now();
    for (std::uint64_t seed = 1; seed <= kills; ++seed) {
        for (const auto& [name, breach] : {std::pair("simulated", velko::soak::breachAfterKill(seed)),
                                           std::pair("real", velko::soak::breachAfterRealKill(seed))}) {
            if (breach) {
                std::cout << "After the " << name << " kill of seed " << seed << ": " << *breach << '\n';
                return 1;
            }
        }
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - started;
    std::cout << kills << " simulated and " << kills << " real kills in " << took.count()
              << " s: all icons are back, and the layout is whole\n";
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string> arguments(argv + 1, argv + argc);
        std::uint64_t kills = 0;
        if (arguments.size() == 2 && arguments.front() == "--kills" && read(arguments.back(), kills)) {
            return kill(kills);
        }
        if (const auto request = requestOf(arguments)) {
            return soak(*request);
        }
        std::cerr << "usage: velko-soak SEEDS [--from SEED] [--hours HOURS] [--logs FOLDER]\n"
                     "       velko-soak --kills KILLS\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "The soak stopped: " << error.what() << '\n';
        return 1;
    }
}
