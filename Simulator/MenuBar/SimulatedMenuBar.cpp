#include "Simulator/MenuBar/SimulatedMenuBar.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <numeric>
#include <ranges>
#include <utility>

namespace velko {

namespace {

constexpr std::size_t gapColumns = 2;

struct Label {
    std::string text;
    std::size_t columns = 0;
};

/// The label, if each of its characters takes one column.
Label label(std::string text) {
    const auto columns = std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; });
    return {.text = std::move(text), .columns = static_cast<std::size_t>(columns)};
}

std::string twoDigits(long number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string clockText(PreciseDate date) {
    static constexpr std::array weekdays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto day = std::chrono::floor<std::chrono::days>(date);
    const std::chrono::year_month_day ymd(day);
    const std::chrono::hh_mm_ss time(std::chrono::floor<std::chrono::seconds>(date - day));
    return std::string(weekdays.at(std::chrono::weekday(day).c_encoding())) + " " +
           std::to_string(static_cast<unsigned>(ymd.day())) + " " +
           months.at(static_cast<unsigned>(ymd.month()) - 1) + " " + twoDigits(time.hours().count()) + ":" +
           twoDigits(time.minutes().count()) + ":" + twoDigits(time.seconds().count());
}

Label labelOf(const SimulatedMenuBar::Slot& slot, PreciseDate clock, ProcessID broom) {
    const std::string title = slot.icon.title.value_or("");
    if (slot.pid == broom) {
        return {.text = "\U0001F9F9", .columns = 2};
    }
    if (slot.icon.systemItem) {
        return label(slot.icon.systemItem == SimulatedApp::clockItem ? clockText(clock) : title);
    }
    if (title.empty() || title == slot.appName) {
        return label(slot.appName);
    }
    return label(slot.appName + " " + title);
}

std::size_t columnsOf(const std::vector<Label>& labels) {
    return std::accumulate(
        labels.begin(), labels.end(), std::size_t{0},
        [](std::size_t sum, const auto& each) { return sum + each.columns + (sum == 0 ? 0 : gapColumns); });
}

template <class List, class Value>
bool contains(const List& list, const Value& value) {
    return std::ranges::find(list, value) != list.end();
}

bool isAllowed(const SimulatedMenuBar::Slot& slot, const SimulatedAllowlist& allowlist) {
    return slot.icon.systemItem ? contains(allowlist.systemItems, *slot.icon.systemItem)
                                : contains(allowlist.bundleIDs, slot.bundleID);
}

/// One of an app's icons, counted from 0; null when there is none.
template <class Slots>
auto* findIn(Slots& slots, ProcessID pid, std::size_t index) {
    auto owned = slots | std::views::filter([pid](const auto& slot) { return slot.pid == pid; });
    for (auto& slot : owned) {
        if (index-- == 0) {
            return &slot;
        }
    }
    return static_cast<decltype(slots.data())>(nullptr);
}

}  // namespace

SimulatedElementRef SimulatedMenuBar::add(const SimulatedProcess& owner, SimulatedIcon icon,
                                          std::optional<std::size_t> place) {
    const std::size_t index = std::min(place.value_or(slots_.size()), slots_.size());
    Slot& slot = *slots_.emplace(slots_.begin() + static_cast<std::ptrdiff_t>(index));
    slot.pid = owner.pid;
    slot.bundleID = owner.app.bundleID;
    slot.appName = owner.app.name;
    slot.icon = std::move(icon);
    slot.element = std::make_shared<SimulatedElement>();
    slot.element->pid = owner.pid;
    return slot.element;
}

SimulatedMenuBar::Slot* SimulatedMenuBar::find(ProcessID pid, std::size_t index) {
    return findIn(slots_, pid, index);
}

const SimulatedMenuBar::Slot* SimulatedMenuBar::find(ProcessID pid, std::size_t index) const {
    return findIn(slots_, pid, index);
}

const SimulatedMenuBar::Slot* SimulatedMenuBar::under(Point point) const {
    const auto found = std::ranges::find_if(
        slots_, [point](const Slot& slot) { return slot.shows() && slot.frame.contains(point); });
    return found == slots_.end() ? nullptr : &*found;
}

bool SimulatedMenuBar::remove(ProcessID pid, std::size_t index) {
    const Slot* found = find(pid, index);
    if (found == nullptr) {
        return false;
    }
    slots_.erase(slots_.begin() + (found - slots_.data()));
    return true;
}

void SimulatedMenuBar::removeAll(ProcessID pid) {
    std::erase_if(slots_, [pid](const Slot& slot) { return slot.pid == pid; });
}

void SimulatedMenuBar::layOut(const std::optional<SimulatedAllowlist>& allowlist, const Room& room) {
    double left = room.right;
    double swallowed = 0;  // they keep their order
    bool isFull = false;
    for (Slot& slot : slots_) {
        const bool isNew = slot.frame.height <= 0;
        slot.isVisible = !allowlist || isAllowed(slot, *allowlist);
        slot.frame.width = slot.icon.width;
        const bool mayBeSwallowed = slot.isVisible && !slot.icon.systemItem && slot.pid != room.broom;
        isFull = isFull || (mayBeSwallowed && left - slot.icon.width < room.left);
        slot.isSwallowed = mayBeSwallowed && isFull;
        if (slot.isSwallowed) {
            slot.frame = {.x = room.elsewhere.x - slot.icon.width / 2 - swallowed++,
                          .width = slot.icon.width,
                          .height = room.height};
            continue;
        }
        if (slot.isVisible) {
            left -= slot.icon.width;
        }
        if (slot.isVisible || isNew) {
            slot.frame.x = slot.isVisible ? left : left - slot.icon.width;
            slot.frame.height = room.height;
        }
    }
}

std::string SimulatedMenuBar::picture(PreciseDate clock, ProcessID broom, std::size_t columns) const {
    std::vector<std::string> rows;
    std::vector<Label> row;
    const auto finishRow = [&] {
        std::ranges::reverse(row);
        const std::size_t used = columnsOf(row);
        std::string text(columns > used ? columns - used : 0, ' ');
        for (std::size_t i = 0; i < row.size(); ++i) {
            text += (i == 0 ? "" : std::string(gapColumns, ' ')) + row[i].text;
        }
        rows.push_back(std::move(text));
        row.clear();
    };
    for (const Slot& slot : slots_ | std::views::filter(&Slot::shows)) {
        row.push_back(labelOf(slot, clock, broom));
        if (row.size() > 1 && columnsOf(row) > columns) {
            Label next = std::move(row.back());
            row.pop_back();
            finishRow();
            row.push_back(std::move(next));
        }
    }
    finishRow();
    std::string picture;
    for (const std::string& text : rows | std::views::reverse) {
        picture += (picture.empty() ? "" : "\n") + text;
    }
    return picture;
}

}  // namespace velko
