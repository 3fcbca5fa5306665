#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "Velko/View/Drawing.h"
#include "Velko/View/Menu.h"
#include "VelkoCore/Identifiers.h"

/// The words in which every surface is described. A surface is a tree of nodes; a renderer turns it into
/// the platform's own controls and calls the functions that it carries, on the main thread.
namespace velko::view {

struct Node;

struct Text {
    enum class Style { largeTitle, title, headline, body, caption };

    std::string text{};
    Style style = Style::body;
    bool isSecondary = false;   ///< in the paler colour of explanations
    bool isSelectable = false;  ///< can be marked and copied
    bool isCentred = false;
};

/// A system symbol.
struct Symbol {
    std::string name{};
    double points = 13;
    Ink ink = Ink::label;
};

/// The icon of an app, or a plain tile for one that is not on this machine.
struct AppIcon {
    BundleID bundleID{};
    double points = 16;
};

struct Picture {
    Drawing drawing{};
};

/// A key that does what a control does while its surface has the keyboard.
struct Shortcut {
    enum class Key { none, enter, escape, leftArrow, character };

    Key key = Key::none;
    char character = 0;  ///< with `character`: a digit or a small letter

    bool operator==(const Shortcut&) const = default;
};

struct Button {
    enum class Style { standard, primary, link };

    std::string title{};   ///< empty: the symbol stands alone, and the node has a label
    std::string symbol{};  ///< a system symbol's name; empty: none
    Style style = Style::standard;
    Shortcut shortcut{};
    std::function<void()> press{};
};

struct Toggle {
    std::string title{};
    bool isOn = false;
    std::function<void(bool)> change{};
};

struct Picker {
    enum class Style { popUp, segmented };

    static constexpr std::size_t nothing = static_cast<std::size_t>(-1);

    std::string title{};  ///< empty: none is drawn, and the node has a label
    std::vector<std::string> options{};
    std::size_t selected = 0;  ///< `nothing` where none is: among segments only
    Style style = Style::popUp;
    std::function<void(std::size_t)> choose{};
};

/// A button that opens a menu, made anew each time.
struct MenuButton {
    std::string title{};
    std::function<Menu()> menu{};
};

/// An app as a tile: icon above name. It can be pressed, has a menu of its own, and can be dragged onto a
/// `Group` that takes apps.
struct Tile {
    BundleID bundleID{};
    std::string name{};
    std::string badge{};  ///< a short word beside the name; empty: none
    std::function<void()> press{};
    std::function<Menu()> menu{};  ///< absent: none
};

/// Children one after another, left to right or top to bottom.
struct Stack {
    enum class Axis { row, column };
    enum class Alignment { leading, centre };

    Axis axis = Axis::column;
    Alignment alignment = Alignment::leading;  ///< across the axis; a row's `leading` is its top
    double spacing = 8;
    double padding = 0;
    std::vector<Node> children;
};

/// Children that belong together, in a frame, below a title.
struct Group {
    std::string title{};  ///< empty: none
    std::vector<Node> children;
    std::function<void(const BundleID&)> drop{};  ///< takes a dragged app; absent: takes none
};

/// Children that scroll when they are higher than `height`.
struct Scroll {
    double height = 0;
    std::vector<Node> children;
};

/// One of several pages, chosen by tabs along the top.
struct Pages {
    struct Tab {
        std::string title{};
        std::string symbol{};

        bool operator==(const Tab&) const = default;
    };

    std::vector<Tab> tabs{};
    std::size_t selected = 0;
    std::function<void(std::size_t)> choose{};
    std::vector<Node> children;  ///< the selected page
};

struct Divider {};

/// Room that takes what is left of its row or column.
struct Spacer {};

using Content = std::variant<Text, Symbol, AppIcon, Picture, Button, Toggle, Picker, MenuButton, Tile, Stack,
                             Group, Scroll, Pages, Divider, Spacer>;

/// One element of a surface.
struct Node {
    std::string id{};     ///< unique within the surface; the same thing keeps it from tree to tree
    std::string label{};  ///< what VoiceOver says; empty: the visible text, and decoration is silent
    std::string help{};   ///< shown while the pointer rests on it; empty: none
    bool isEnabled = true;
    double width = 0;      ///< points; 0: as wide as it needs to be
    double minHeight = 0;  ///< points; it is higher where it needs to be
    Content content{};
};

}  // namespace velko::view
