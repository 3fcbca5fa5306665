#include "Velko/Checks/SelfCheck.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "Velko/Checks/HotKeyContract.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/MenuBar/InventoryDump.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko::SelfCheck {

namespace {

using Contracts::Checks;
using Contracts::expect;
using namespace std::chrono_literals;

constexpr int dumpDepth = 8;

std::string wholeNumber(double value) {
    return std::to_string(static_cast<long>(value));
}

void checkScreens(const Platform& platform, Checks& checks) {
    std::string seen;
    for (const Display& display : platform.displays.displays()) {
        seen += (seen.empty() ? "" : ", ") + wholeNumber(display.frame.width) + "x" +
                wholeNumber(display.frame.height) + (MenuBarStrip::housing(display) ? " with a notch" : "");
    }
    expect(checks, "screens are listed", !seen.empty(), seen);
}

/// The contracts of the ports, as far as they are harmless.
void checkPorts(const Subject& subject, Notes& notes) {
    const Platform& platform = subject.platform;
    Checks checks;
    // This comes first: while it runs the main loop, the system also tells us of the other apps.
    Contracts::checkMainThread(platform.mainThread, subject.pass, checks);
    Contracts::checkDisplays(platform.displays, checks);
    checkScreens(platform, checks);
    Contracts::checkProcesses(platform.processes, checks);
    Contracts::checkWorkspace(platform, checks);
    Contracts::checkWindows(platform.windows, checks);
    Contracts::checkPointer(platform, checks);
    Contracts::checkAccessibility(platform, checks);
    Contracts::checkPrivateFramework(platform.privateFramework, VKAssessment::frameworkPath,
                                     VKAssessment::configurationClass, checks);
    Contracts::checkHotKeys(subject.hotKeys, checks);
    notes.add(checks);
    notes.tell("menus", isAnyMenuOpen(platform) ? "one is open" : "none is open");
}

void checkPropertyLists(const PropertyListReader& reader, Notes& notes) {
    constexpr std::string_view text =
        R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
<key>Hide</key><array><string>Caf&#233;</string><data>AQI=</data></array>
<key>ShowOnHover</key><true/>
<key>Interval</key><real>6.5</real>
<key>Count</key><integer>-7</integer>
<key>Seen</key><date>2026-03-01T09:30:00Z</date>
</dict></plist>)";
    const PropertyList::Dictionary wanted{
        {"Hide",
         {PropertyList::Array{{std::string("Café")}, {PropertyList::Data{std::byte{1}, std::byte{2}}}}}},
        {"ShowOnHover", {true}},
        {"Interval", {6.5}},
        {"Count", {std::int64_t{-7}}},
        {"Seen", {Date(std::chrono::sys_days(2026y / 3 / 1) + 9h + 30min)}},
    };
    const auto read = readPropertyList(std::as_bytes(std::span(text)), reader);
    notes.expect("a property list is read", read == PropertyList{wanted},
                 read ? "" : "error " + std::to_string(static_cast<int>(read.error())));
}

/// Whether Velko may make files in the folder, or in the nearest folder above it that exists.
void checkFolder(const char* name, const std::filesystem::path& file, Notes& notes) {
    std::error_code error;
    std::filesystem::path folder = file.parent_path();
    while (folder.has_relative_path() && !std::filesystem::exists(folder, error)) {
        folder = folder.parent_path();
    }
    const bool isWritable =
        std::filesystem::is_directory(folder, error) && ::access(folder.c_str(), W_OK | X_OK) == 0;
    notes.expect(name, file.is_absolute() && isWritable, folder.string());
}

void checkFiles(const Subject& subject, Notes& notes) {
    checkPropertyLists(subject.propertyLists, notes);
    checkFolder("the layout's folder is writable", subject.layoutFile, notes);
    checkFolder("the log's folder is writable", subject.logFile, notes);
}

void checkDrawing(const Subject& subject, Notes& notes) {
    if (!subject.draw) {
        notes.tell("controls", "nothing draws here");
        return;
    }
    Checks checks;
    RenderingCheck::check(subject.draw, checks);
    notes.add(checks);
}

constexpr auto sectionTable = std::to_array<Section>({
    {.name = "ports", .run = checkPorts},
    {.name = "permission", .run = checkPermission},
    {.name = "menu bar", .run = checkMenuBar},
    {.name = "framework", .run = checkFramework},
    {.name = "hiding", .needs = Option::tryHiding, .run = tryHiding},
    {.name = "icon", .needs = Option::windows, .run = checkStatusItem},
    {.name = "clicks", .needs = Option::clicks, .run = askForClicks},
    {.name = "timers and notices", .needs = Option::watch, .isLeftAlone = true, .run = watch},
    {.name = "signature", .run = checkSignature},
    {.name = "files", .run = checkFiles},
    {.name = "controls", .run = checkDrawing},
    {.name = "surfaces", .run = checkSurfaces},
    {.name = "windows", .needs = Option::windows, .run = openSurfaces},
});

struct OptionWords {
    Option option;
    std::string_view flag;
    std::string_view meaning;
};

constexpr auto optionTable = std::to_array<OptionWords>({
    {Option::tryHiding, "--try-hiding", "hides the icons for five seconds, twice"},
    {Option::windows, "--windows", "shows an icon, a menu and windows of Velko for some seconds"},
    {Option::watch, "--watch", "watches timers and icons for two minutes"},
    {Option::clicks, "--clicks", "asks you to click on an icon of Velko in several ways"},
});

constexpr std::string_view allOptions = "--all";
constexpr std::array withoutAPerson{Option::tryHiding, Option::windows, Option::watch};

std::string_view flagOf(Option option) {
    return std::ranges::find(optionTable, option, &OptionWords::option)->flag;
}

std::optional<ProcessID> processID(std::string_view text) {
    ProcessID pid = 0;
    const char* const end = std::to_address(text.end());
    const auto [stop, error] = std::from_chars(std::to_address(text.begin()), end, pid);
    return error == std::errc{} && stop == end && pid > 0 ? std::optional(pid) : std::nullopt;
}

/// The rest of a command line after "--self-check"; nothing when something in it is not understood.
std::optional<Command> parseCheck(std::span<const std::string> rest) {
    Command command{.kind = Command::Kind::check};
    while (!rest.empty()) {
        const std::string& word = rest.front();
        const auto* const option = std::ranges::find(optionTable, word, &OptionWords::flag);
        std::filesystem::path* const file = word == "--json"       ? &command.jsonFile
                                            : word == "--pictures" ? &command.pictures
                                                                   : nullptr;
        const bool isOnly = word == "--only" && rest.size() > 1 && command.only.empty() &&
                            std::ranges::count(sections(), rest[1], &Section::name) == 1;
        const bool isFile = file != nullptr && rest.size() > 1 && file->empty() && !rest[1].empty();
        if (option != optionTable.end()) {
            command.options.insert(option->option);
        } else if (word == allOptions) {
            command.options.insert(withoutAPerson.begin(), withoutAPerson.end());
        } else if (isFile) {
            *file = rest[1];
        } else if (isOnly) {
            command.only = rest[1];
        } else {
            return std::nullopt;
        }
        rest = rest.subspan(isFile || isOnly ? 2 : 1);
    }
    return command;
}

Notes::About aboutRun(const Subject& subject) {
    return {{"version", subject.info.version},
            {"build", subject.info.build},
            {"channel", subject.info.channel},
            {"system", subject.info.systemVersion},
            {"bundle", subject.info.bundlePath}};
}

}  // namespace

Command parse(const std::vector<std::string>& arguments) {
    // The system adds arguments of its own when it opens an app.
    if (arguments.empty() || arguments.front() != "--self-check") {
        return {.kind = Command::Kind::runApp};
    }
    if (arguments.size() == 2 && arguments[1] == "--hide") {
        return {.kind = Command::Kind::hide};
    }
    if (arguments.size() == 3 && arguments[1] == "--dump") {
        const auto pid = processID(arguments[2]);
        return pid ? Command{.kind = Command::Kind::dump, .pid = *pid}
                   : Command{.kind = Command::Kind::usage};
    }
    return parseCheck(std::span(arguments).subspan(1)).value_or(Command{.kind = Command::Kind::usage});
}

std::string usage() {
    std::string text =
        "usage: Velko --self-check [OPTION...] [--json FILE] [--pictures FOLDER] [--only SECTION]\n"
        "       Velko --self-check --dump PID\n";
    for (const OptionWords& row : optionTable) {
        std::string flag(row.flag);
        flag.resize(14, ' ');
        text += "  " + flag;
        text += row.meaning;
        text += "\n";
    }
    text += "  --all         all of these that need no person\nsections:";
    for (const Section& section : sections()) {
        text += section.name == sections().front().name ? " " : ", ";
        text += section.name;
    }
    return text + "\n";
}

std::span<const Section> sections() noexcept {
    return sectionTable;
}

int run(const Subject& given, const Command& command, const std::function<void(const std::string&)>& say) {
    Notes notes(say);
    Subject subject = given;
    subject.pictures = command.pictures;
    const Platform& platform = subject.platform;
    const Notes::About about = aboutRun(subject);
    for (const auto& [name, value] : about) {
        notes.say(std::string(name).append(" ").append(value));
    }
    // Written after each section: a fault of the program must not take along what was found before it.
    std::optional<FileError> unwritten;
    const auto write = [&](bool isComplete) {
        if (!command.jsonFile.empty()) {
            const auto written = AtomicFile::replace(command.jsonFile, notes.json(about, isComplete));
            unwritten = written ? std::nullopt : std::optional(written.error());
        }
    };
    for (const Section& section : sections()) {
        if (!command.only.empty() && section.name != command.only) {
            continue;
        }
        if (section.needs == Option::none || command.options.contains(section.needs)) {
            notes.begin(section.name);
            const Subscription awake =
                section.isLeftAlone ? Subscription() : platform.activity.begin("Velko checks this Mac");
            section.run(subject, notes);
        } else {
            notes.leaveOut(section.name, flagOf(section.needs));
        }
        write(false);
    }
    write(true);
    notes.say(notes.summary());
    if (unwritten) {
        notes.say("FAIL " + unwritten->description);
    }
    return notes.hasFailed() || unwritten ? 1 : 0;
}

std::string dump(const Platform& platform, ProcessID pid) {
    return Inventory::axDump(platform, pid, dumpDepth);
}

}  // namespace velko::SelfCheck
