#pragma once

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/View/Drawing.h"
#include "Velko/View/Menu.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Keys/KeyCombination.h"

/// Every surface is described as a tree of nodes. A renderer turns the tree into the platform's own controls,
/// and calls the functions in it on the main thread.
namespace velko::view {

struct Node;

struct Text {
    enum class Style { largeTitle, title, headline, body, caption };

    std::string text{};
    Style style = Style::body;
    bool isSecondary = false;   ///< in a paler colour, as explanations are
    bool isSelectable = false;  ///< the user can select and copy it
    bool isCentred = false;
};

/// A system symbol.
struct Symbol {
    std::string name{};
    double points = 13;
    Ink ink = Ink::label;
};

/// The icon of an app; a plain tile for an app that this Mac does not have.
struct AppIcon {
    BundleID bundleID{};
    double points = 16;
};

struct Picture {
    Drawing drawing{};
};

/// A key that works a control while its surface has the keyboard.
struct Shortcut {
    enum class Key { none, enter, escape, leftArrow, character };

    Key key = Key::none;
    char character = 0;  ///< with `character`: a digit or a small letter

    bool operator==(const Shortcut&) const = default;
};

struct Button {
    enum class Style { standard, primary, link };

    std::string title{};   ///< empty: there is only the symbol, and the node has a label
    std::string symbol{};  ///< a system symbol's name; empty: none
    Style style = Style::standard;
    Shortcut shortcut{};
    Shortcut alternative{};  ///< another key that does the same
    std::function<void()> press{};
};

/// A key that a search field passes on, and the modifier keys that are down with it.
struct KeyPress {
    enum class Key { up, down, enter, escape, digit };

    Key key = Key::enter;
    int digit = 0;  ///< with `digit`: 1 to 9, and Command is down
    bool shift = false;
    bool control = false;
    bool option = false;
    bool command = false;

    [[nodiscard]] bool isPlain() const noexcept { return !shift && !control && !option && !command; }
    bool operator==(const KeyPress&) const = default;
};

/// A field in which the user writes what to look for. Keys that are for no text can work a list beside it.
struct SearchField {
    std::string text{};
    std::string placeholder{};  ///< shows while there is no text; without a label VoiceOver says it
    bool hasFocus = false;      ///< the keyboard goes here when the surface opens
    std::string drives{};  ///< id of a list in the same surface, which Up, Down and Return work; empty: none
    std::function<void(const std::string&)> change{};
    std::function<bool(const KeyPress&)> key{};  ///< before `drives`; returns whether the key was used
};

/// A button that shows keys and takes others: the next ones that the user presses while it records, whatever
/// they usually mean.
struct KeyRecorder {
    std::string title{};  ///< the keys, or what to do now
    bool isRecording = false;
    std::function<void()> press{};  ///< by a click: begins to record, or stops
    std::function<void(const KeyCombination&)> record{};
};

struct Toggle {
    enum class Style { slider, checkbox };

    std::string title{};
    bool isOn = false;
    Style style = Style::slider;
    std::function<void(bool)> change{};
};

struct Picker {
    enum class Style { popUp, segmented };

    static constexpr std::size_t nothing = static_cast<std::size_t>(-1);

    std::string title{};  ///< empty: there is none to see, and the node has a label
    std::vector<std::string> options{};
    std::size_t selected = 0;  ///< `nothing` where none is selected, which only segments can show
    Style style = Style::popUp;
    std::function<void(std::size_t)> choose{};
};

/// A button that opens a menu. The menu is made anew each time.
struct MenuButton {
    std::string title{};   ///< empty: there is only the symbol, and the node has a label
    std::string symbol{};  ///< a system symbol's name; empty: none
    std::function<Menu()> menu{};
};

/// How much of something is done.
struct Progress {
    double value = 0;  ///< 0 to 1
};

/// An app as a tile: its icon above its name. The user can press it, open its menu, and drag it onto a
/// `Group` that takes apps.
struct Tile {
    static constexpr double usualWidth = 76;  ///< points
    static constexpr double iconPoints = 36;

    BundleID bundleID{};
    std::string name{};
    std::string badge{};  ///< a short word beside the name; empty: none
    std::function<void()> press{};
    std::function<Menu()> menu{};  ///< absent: none
};

/// Children in a row from left to right, or in a column from top to bottom.
struct Stack {
    enum class Axis { row, column };
    enum class Alignment { leading, centre };

    Axis axis = Axis::column;
    Alignment alignment = Alignment::leading;  ///< in a row: the children's tops or middles on one line
    double spacing = 8;
    double padding = 0;
    std::vector<Node> children;
};

/// Children that belong together, in a frame below a title.
struct Group {
    std::string title{};  ///< empty: none
    std::vector<Node> children;
    std::function<void(const BundleID&)> drop{};  ///< takes an app that the user drops; absent: takes none
};

/// Children that scroll if they are higher than `height`.
struct Scroll {
    double height = 0;
    std::vector<Node> children;
};

using RowIDs = std::set<std::string>;

/// Rows one below the other. The user selects one or several with the mouse, the arrow keys, or by typing how
/// what VoiceOver says of a row begins. A row that is disabled can't be selected: it is a heading.
struct List {
    enum class Selection { one, several };

    Selection selection = Selection::one;
    RowIDs selected{};   ///< the ids of rows
    double height = 0;   ///< points; what is beyond it scrolls
    bool grows = false;  ///< takes the height that its window has left
    std::vector<Node> children;
    std::function<void(const RowIDs&)> select{};
    std::function<void(const std::string&)> activate{};  ///< by Return or a double click; absent: nothing
    std::function<Menu(const RowIDs&)> menu{};           ///< about these rows; absent: none
};

/// A title that shows or hides what is below it.
struct Disclosure {
    std::string title{};
    bool isOpen = false;
    std::function<void(bool)> change{};
    std::vector<Node> children;  ///< there only while it is open
};

/// One of several pages. The user chooses it with tabs along the top.
struct Pages {
    enum class Style {
        tabs,
        toolbar,  ///< in the toolbar of the window, which has the title of the selected page
    };

    struct Tab {
        std::string title{};
        std::string symbol{};

        bool operator==(const Tab&) const = default;
    };

    std::vector<Tab> tabs{};
    std::size_t selected = 0;
    Style style = Style::tabs;
    std::function<void(std::size_t)> choose{};
    std::vector<Node> children;  ///< the selected page
};

struct Divider {};

/// Empty room: all that is left in its row or column.
struct Spacer {};

using Content =
    std::variant<Text, Symbol, AppIcon, Picture, Button, SearchField, KeyRecorder, Toggle, Picker, MenuButton,
                 Tile, Progress, Stack, Group, Scroll, List, Disclosure, Pages, Divider, Spacer>;

/// One element of a surface.
struct Node {
    std::string id{};     ///< unique within the surface; the same thing has the same id in the next tree
    std::string label{};  ///< what VoiceOver says; empty: the visible text, and nothing for decoration
    std::string help{};   ///< shown while the pointer rests on it; empty: none
    bool isEnabled = true;
    double width = 0;      ///< points; 0: as wide as its content
    double minHeight = 0;  ///< points; it may be higher
    Content content{};
};

}  // namespace velko::view

/// Functions that make the nodes that are needed everywhere.
namespace velko::view {

[[nodiscard]] inline Node text(std::string id, std::string words, Text::Style style = Text::Style::body) {
    return {.id = std::move(id), .content = Text{.text = std::move(words), .style = style}};
}

/// A text that explains something. It is smaller and paler.
[[nodiscard]] inline Node explanation(std::string id, std::string words) {
    return {.id = std::move(id),
            .content = Text{.text = std::move(words), .style = Text::Style::caption, .isSecondary = true}};
}

[[nodiscard]] inline Node button(std::string id, Button button) {
    return {.id = std::move(id), .content = std::move(button)};
}

/// Children side by side. Without an alignment their middles are on one line.
[[nodiscard]] inline Node row(std::string id, std::vector<Node> children,
                              Stack::Alignment alignment = Stack::Alignment::centre) {
    return {
        .id = std::move(id),
        .content = Stack{.axis = Stack::Axis::row, .alignment = alignment, .children = std::move(children)}};
}

[[nodiscard]] inline Node column(std::string id, std::vector<Node> children, double spacing = 8) {
    return {.id = std::move(id), .content = Stack{.spacing = spacing, .children = std::move(children)}};
}

[[nodiscard]] inline Node spacer(std::string id) {
    return {.id = std::move(id), .content = Spacer{}};
}

}  // namespace velko::view
