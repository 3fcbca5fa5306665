#include "Playground/Web/Desktop.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <ranges>
#include <string>
#include <system_error>
#include <utility>

#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "VelkoCore/Files/AtomicFile.h"

namespace velko::web {

namespace {

/// A press of the mouse. Everything that listens for clicks hears it.
void pressElsewhere(Session& session) {
    if (!session.menus().empty()) {
        session.closeMenus();
    }
    session.mac().surfaces.clickOutside();
}

Point middle(const Rect& rect) {
    return {.x = rect.x + rect.width / 2, .y = rect.y + rect.height / 2};
}

/// A point within a rectangle. The page measures it in thousandths, from the top left corner.
Point pointWithin(const Rect& rect, const Fields& fields) {
    constexpr double most = 999;
    const auto part = [&](const char* key) {
        return std::clamp(static_cast<double>(fields.number(key).value_or(most / 2)), 0.0, most) / 1000;
    };
    return {.x = rect.x + rect.width * part("x"), .y = rect.maxY() - rect.height * (part("y") + 0.001)};
}

/// The middle of an icon of a process, in the coordinates of the menu bar.
std::optional<Point> middleOfIcon(const SimulatedMac& mac, std::int64_t pid, std::int64_t index) {
    for (const auto& slot : mac.menuBar().slots()) {
        if (slot.pid == pid && index-- == 0) {
            return middle(slot.frame);
        }
    }
    return std::nullopt;
}

/// Translates what the page says about the pointer into a point on the screen. y grows upwards.
Point pointFor(SimulatedMac& mac, const Fields& fields) {
    const auto displays = mac.displays.displays();
    const Rect screen = displays.empty() ? Rect{} : displays.front().frame;
    const std::string over = fields.text("over").value_or("");
    if (over == "shelf") {
        return pointWithin(mac.surfaces.surface(Surfaces::Kind::shelf).frame().value_or(screen), fields);
    }
    if (over == "broom" || over == "icon") {
        const std::int64_t pid = over == "broom" ? mac.processes.ownPID() : fields.number("pid").value_or(0);
        if (const auto icon = middleOfIcon(mac, pid, fields.number("index").value_or(0))) {
            return {.x = icon->x, .y = screen.maxY() - icon->y};
        }
    }
    return over == "bar" ? Point{.x = screen.x + screen.width / 3, .y = screen.maxY() - 4} : middle(screen);
}

constexpr std::size_t longestName = 100;  ///< bytes
constexpr std::size_t mostNames = 200;

}  // namespace

Done clickBroom(Session& session, const Fields& fields) {
    SimulatedMac& mac = session.mac();
    session.closeControlMenu();
    const bool menuWasOpen = mac.statusItem.isMenuOpen();
    const bool isDone = mac.clickBroom({.isRight = fields.flag("right"),
                                        .option = fields.flag("option"),
                                        .control = fields.flag("control")});
    if (menuWasOpen) {
        session.closeMenus();
    }
    return isDone ? Done() : std::unexpected("The broom does not show.");
}

Done clickIcon(Session& session, const Fields& fields) {
    const auto pid = fields.number("pid").value_or(0);
    const auto index = fields.number("index").value_or(0);
    if (!std::in_range<ProcessID>(pid) || index < 0) {
        return std::unexpected("There is no such icon.");
    }
    session.closeControlMenu();
    session.mac().surfaces.clickOutside();
    if (session.mac().statusItem.menu() != nullptr) {
        session.closeMenus();
    }
    return session.mac().clickIcon(static_cast<ProcessID>(pid), static_cast<std::size_t>(index))
               ? Done()
               : std::unexpected("That icon does not show.");
}

Done clickDesktop(Session& session, const Fields&) {
    constexpr Point desktop{.x = 400, .y = 500};
    pressElsewhere(session);
    session.mac().click(desktop);
    return {};
}

Done movePointer(Session& session, const Fields& fields) {
    session.mac().pointer.moveTo(pointFor(session.mac(), fields));
    return {};
}

bool isPlainFileName(std::string_view name) {
    const auto isOdd = [](char byte) {
        return byte == '/' || byte == '\\' || static_cast<unsigned char>(byte) < 0x20U;
    };
    return !name.empty() && name.size() <= longestName && !name.starts_with('.') &&
           std::ranges::none_of(name, isOdd);
}

std::vector<std::string> documentNames(const std::filesystem::path& documents) {
    std::vector<std::string> names;
    std::error_code error;
    for (auto entry = std::filesystem::directory_iterator(documents, error);
         !error && entry != std::filesystem::directory_iterator() && names.size() < mostNames;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (std::error_code ignored; isPlainFileName(name) && entry->is_regular_file(ignored)) {
            names.push_back(name);
        }
    }
    std::ranges::sort(names);
    return names;
}

Done answerPanel(Session& session, const Fields& fields) {
    SimulatedDialogs& dialogs = session.mac().dialogs;
    if (!dialogs.isPanelOpen()) {
        return std::unexpected("No panel is open.");
    }
    const auto name = fields.text("file");
    if (!name) {
        dialogs.choose(std::nullopt);
        return {};
    }
    if (!isPlainFileName(*name)) {
        return std::unexpected("A file can't be called that.");
    }
    const auto file = session.world().documents() / *name;
    std::error_code error;
    if (const auto status = std::filesystem::status(file, error);
        std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return std::unexpected("That is no file.");
    }
    if (const auto text = fields.text("text")) {
        const auto kept = AtomicFile::replace(file, *text);
        if (!kept) {
            return std::unexpected(kept.error().description);
        }
    }
    dialogs.choose(file);
    return {};
}

}  // namespace velko::web
