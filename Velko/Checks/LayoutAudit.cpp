#include "Velko/Checks/LayoutAudit.h"

#include <algorithm>
#include <cmath>

#include "VelkoCore/NumberText.h"

namespace velko::LayoutAudit {

namespace {

constexpr double tolerance = 1;  // points; renderers round to whole pixels

std::string words(const Rect& frame) {
    return wholeText(frame.x) + "," + wholeText(frame.y) + " " + wholeText(frame.width) + "x" +
           wholeText(frame.height);
}

bool isWithin(const Rect& inner, const Rect& outer) {
    return inner.x >= outer.x - tolerance && inner.y >= outer.y - tolerance &&
           inner.maxX() <= outer.maxX() + tolerance && inner.maxY() <= outer.maxY() + tolerance;
}

bool overlap(const Rect& one, const Rect& other) {
    return std::min(one.maxX(), other.maxX()) - std::max(one.x, other.x) > tolerance &&
           std::min(one.maxY(), other.maxY()) - std::max(one.y, other.y) > tolerance;
}

bool isAlike(const Rect& one, const Rect& other) {
    return std::abs(one.x - other.x) <= tolerance && std::abs(one.y - other.y) <= tolerance &&
           std::abs(one.width - other.width) <= tolerance && std::abs(one.height - other.height) <= tolerance;
}

void judge(const std::vector<Measured>& views, std::size_t index, std::vector<std::string>& found) {
    const Measured& view = views[index];
    if (view.isAmbiguous) {
        found.push_back(view.id + " could be placed in another way");
    }
    if (view.needed.width > view.frame.width + tolerance ||
        view.needed.height > view.frame.height + tolerance) {
        found.push_back(view.id + " is cut: it needs " + wholeText(std::ceil(view.needed.width)) + "x" +
                        wholeText(std::ceil(view.needed.height)) + " and has " + wholeText(view.frame.width) +
                        "x" + wholeText(view.frame.height));
    }
    if (!view.parent) {
        return;
    }
    const Measured& parent = views[*view.parent];
    if (!parent.clips && !isWithin(view.frame, parent.frame)) {
        found.push_back(view.id + " at " + words(view.frame) + " is outside " + parent.id + " at " +
                        words(parent.frame));
    }
    for (std::size_t other = 0; other < index; ++other) {
        if (views[other].parent == view.parent && overlap(view.frame, views[other].frame)) {
            found.push_back(view.id + " lies over " + views[other].id);
        }
    }
}

}  // namespace

std::vector<std::string> faults(const std::vector<Measured>& views) {
    std::vector<std::string> found;
    if (views.empty()) {
        found.emplace_back("nothing was drawn");
    }
    for (std::size_t index = 0; index < views.size(); ++index) {
        judge(views, index, found);
    }
    return found;
}

std::vector<std::string> differences(const std::vector<Measured>& before,
                                     const std::vector<Measured>& after) {
    std::vector<std::string> found;
    if (before.size() != after.size()) {
        found.push_back(std::to_string(before.size()) + " views, and then " + std::to_string(after.size()));
    }
    for (const Measured& view : before) {
        const auto same = std::ranges::find(after, view.id, &Measured::id);
        if (same == after.end()) {
            found.push_back(view.id + " is gone");
        } else if (!isAlike(view.frame, same->frame)) {
            found.push_back(view.id + " was at " + words(view.frame) + ", and then at " + words(same->frame));
        }
    }
    return found;
}

}  // namespace velko::LayoutAudit
