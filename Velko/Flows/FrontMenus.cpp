#include "Velko/Flows/FrontMenus.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <numeric>
#include <ranges>
#include <utility>
#include <vector>

#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/MenuBarRoom.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

/// The right end of an app's menus; nothing where it has none or does not answer. Any thread.
std::optional<double> endOfMenus(const Accessibility& accessibility, ProcessID pid) {
    const auto bar = AX::element(accessibility, AX::application(accessibility, pid), "AXMenuBar");
    if (!bar) {
        return std::nullopt;
    }
    const std::vector<AXElement> menus = AX::children(accessibility, *bar);
    if (menus.empty()) {
        return std::nullopt;
    }
    const auto answers = AX::attributes(accessibility, menus.back(), {"AXPosition", "AXSize"});
    const auto frame = AX::frame(answers[0], answers[1]);
    return frame && frame->width > 0 ? std::optional(frame->maxX()) : std::nullopt;
}

}  // namespace

FrontMenus::FrontMenus(FlowHost& host, const Platform& platform) : host_(host), platform_(platform) {}

void FrontMenus::start() {
    notices_ = platform_.workspace.observe([this](const WorkspaceNotice& notice) {
        if (notice.kind == WorkspaceNotice::Kind::activated && notice.pid &&
            *notice.pid != platform_.processes.ownPID()) {
            front_ = notice.pid;
            read(*notice.pid);
        }
    });
}

void FrontMenus::readAgain() {
    if (front_) {
        read(*front_);
    }
}

void FrontMenus::read(ProcessID front) {
    // Until the answer nobody knows: the menus of the app before say nothing.
    reading_.cancel();
    end_.reset();
    if (!mayDecide()) {
        return;
    }
    reading_ = platform_.mainThread.background(
        [&accessibility = platform_.accessibility, front] { return endOfMenus(accessibility, front); },
        [this](std::optional<double> found) { end_ = found; });
}

bool FrontMenus::mayDecide() const {
    const AppValues& values = host_.values();
    const auto displays = platform_.displays.displays();
    const bool isInline = values.layout.reveal.notchedStyle == RevealStyle::inline_ ||
                          values.layout.reveal.otherStyle == RevealStyle::inline_;
    if (!values.health().isOk() || !values.layout.shelfWhenFull || !isInline || displays.empty()) {
        return false;
    }
    const auto widths = std::views::values(values.iconWidths);
    const double icons = std::accumulate(widths.begin(), widths.end(), 0.0);
    const double narrowest = std::ranges::min(
        displays | std::views::transform([](const Display& display) { return display.frame.width; }));
    return icons > narrowest / 3;  // no app's menus leave less than that
}

}  // namespace velko
