#include "tests/Soak/Shrink.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <utility>

#include "tests/TemporaryFolder.h"

namespace velko::soak {

namespace {

using namespace std::chrono_literals;

class Shrinking {
 public:
    explicit Shrinking(Outcome failure) : best_(std::move(failure)), rule_(best_.rule()) {}

    [[nodiscard]] Outcome run() {
        std::size_t before = 0;
        do {
            before = best_.steps.size();
            drop();
            shortenWaits();
        } while (best_.steps.size() != before);
        return best_;
    }

 private:
    /// Keeps these steps, or the first of them, if they break the rule too.
    bool keepIfBroken(const Steps& steps) {
        Outcome outcome = replay(steps);
        const bool isBroken = outcome.rule() == rule_;
        if (isBroken) {
            best_ = std::move(outcome);
        }
        return isBroken;
    }

    /// Tries to leave out pieces: of half the length, of a quarter, and so on. It begins at the end, because
    /// fewer steps depend on the last ones.
    void drop() {
        for (std::size_t size = std::max<std::size_t>(best_.steps.size() / 2, 1); size > 0; size /= 2) {
            std::size_t end = best_.steps.size();
            while (end > 0) {
                const std::size_t begin = end - std::min(size, end);
                Steps fewer = best_.steps;
                fewer.erase(std::next(fewer.begin(), static_cast<std::ptrdiff_t>(begin)),
                            std::next(fewer.begin(), static_cast<std::ptrdiff_t>(end)));
                keepIfBroken(fewer);
                end = std::min(begin, best_.steps.size());
            }
        }
    }

    void shortenWaits() {
        for (std::size_t at = 0; at < best_.steps.size(); ++at) {
            for (const std::chrono::milliseconds shorter : {1ms, 100ms, 1000ms, 10'000ms, 60'000ms}) {
                Steps steps = best_.steps;
                if (steps[at].duration.value_or(0ms) <= shorter) {
                    break;
                }
                steps[at].duration = shorter;
                if (keepIfBroken(steps)) {
                    break;
                }
            }
        }
    }

    Outcome best_;
    std::string rule_;
};

}  // namespace

Outcome shrink(const Outcome& failure) {
    return Shrinking(failure).run();
}

std::string report(std::uint64_t seed, const Outcome& failure) {
    const Outcome shortest = shrink(failure);
    std::string script = "# Seed " + std::to_string(seed) + ": " + shortest.breach.value_or("") + '\n';
    for (const script::Step& step : shortest.steps) {
        script += script::print(step) + '\n';
    }
    const auto file = std::filesystem::current_path() / ("soak-" + std::to_string(seed) + ".script");
    writeFile(file, script);
    return script + "Replay it: ./run --script " + file.string() + '\n';
}

}  // namespace velko::soak
