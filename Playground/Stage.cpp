#include "Playground/Stage.h"

#include <cstdint>
#include <iostream>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "VelkoCore/LayoutStore.h"
#include "VelkoEngine/AssessmentEngine.h"

namespace velko::playground {

namespace {

std::uint64_t sizeOf(const std::filesystem::path& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

/// A log line as a terminal shows it: cut where it would run on over several rows.
std::string shortened(const std::string& line) {
    constexpr std::size_t widest = 150;
    return line.size() <= widest ? line : line.substr(0, widest) + "…";
}

}  // namespace

Stage::Stage(const std::filesystem::path& layoutFile, std::filesystem::path logFile)
    : log_(mac_.mainThread, std::move(logFile)), logBytesBefore_(sizeOf(log_.file())) {
    velko_ = std::make_unique<AppController>(
        AppController::Parts{.platform = mac_.platform(),
                             .ports = mac_.appPorts(),
                             .log = log_,
                             .store = LayoutStore(layoutFile),
                             .engine = std::make_unique<AssessmentEngine>(mac_.platform()),
                             .info = {.version = VELKO_VERSION,
                                      .systemVersion = "27.0 (simulated)",
                                      .bundlePath = "/Applications/Velko.app"}});
}

void Stage::show(const std::string& title) {
    const bool isTerminal = ::isatty(STDOUT_FILENO) == 1;
    std::cout << (isTerminal ? "\n\033[1m" : "\n") << title << (isTerminal ? "\033[0m\n" : "\n")
              << mac_.menuBarPicture() << '\n';
    for (; linesShown_ < log_.lines().size(); ++linesShown_) {
        std::cout << "    " << shortened(log_.lines()[linesShown_]) << '\n';
    }
}

void Stage::showSummary() {
    const SimulatedMac::Cost cost = mac_.cost();
    std::cout << "\nPlan in force: " << describe(velko_->engine().current()) << '\n';
    std::cout << "It cost: " << cost.wakeUps << " wake-ups, " << cost.accessibilityMessages
              << " Accessibility messages, " << cost.engineCalls << " engine calls, "
              << sizeOf(log_.file()) - logBytesBefore_ << " bytes of log\n";
}

}  // namespace velko::playground
