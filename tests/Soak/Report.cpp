#include "tests/Soak/Report.h"

#include <filesystem>

#include "tests/Soak/Shrink.h"
#include "tests/TemporaryFolder.h"

namespace velko::soak {

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
