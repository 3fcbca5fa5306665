#include "Playground/Html/Images.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <vector>

#include "Playground/Html/Markup.h"
#include "VelkoCore/NumberText.h"
#include "VelkoEngine/Text/Text.h"

namespace velko::html {

namespace {

constexpr int shapes = 6;  ///< how many outlines the style sheet has for icons in the bar

std::uint32_t hashed(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char byte : text) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
    }
    return hash ^ (hash >> 15U);
}

/// Splits well-formed UTF-8 into characters.
std::vector<std::string> charactersOf(std::string_view word) {
    std::vector<std::string> characters;
    for (const char byte : word) {
        if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U || characters.empty()) {
            characters.emplace_back();
        }
        characters.back() += byte;
    }
    return characters;
}

Attributes spokenAs(std::string_view label, Attributes attributes) {
    if (label.empty()) {
        attributes.push_back({.name = "aria-hidden", .value = "true"});
    } else {
        attributes.push_back({.name = "role", .value = "img"});
        attributes.push_back({.name = "aria-label", .value = std::string(label)});
    }
    return attributes;
}

/// Rounded to a thousandth of a point, which is finer than any screen.
std::string number(double value) {
    const double rounded = std::round(value * 1000) / 1000;
    return decimalText(rounded == 0 ? 0 : rounded);
}

std::string pair(Point point) {
    return number(point.x) + " " + number(point.y);
}

std::string outline(const view::Path& path) {
    using Command = view::PathCommand::Kind;
    std::string text;
    for (const view::PathCommand& command : path) {
        switch (command.kind) {
            case Command::moveTo: text += "M" + pair(command.to); break;
            case Command::lineTo: text += "L" + pair(command.to); break;
            case Command::curveTo:
                text += "C" + pair(command.control1) + " " + pair(command.control2) + " " + pair(command.to);
                break;
            case Command::close: text += "Z"; break;
        }
    }
    return text;
}

std::string pathElement(const view::Shape& shape) {
    std::string text = "<path class=\"" + std::string(inkClass(shape.ink)) + "\" ";
    if (shape.strokeWidth > 0) {
        text += R"(fill="none" stroke="currentColor" stroke-linecap="round" stroke-linejoin="round" )"
                "stroke-width=\"" +
                number(shape.strokeWidth) + "\" ";
    } else {
        text += "fill=\"currentColor\" ";
    }
    if (shape.opacity < 1) {
        text += "opacity=\"" + number(shape.opacity) + "\" ";
    }
    return text + "d=\"" + outline(shape.path) + "\"/>";
}

}  // namespace

std::string initials(std::string_view name) {
    const std::string repaired = repairedUtf8(name);
    std::vector<std::string> words(1);
    for (const char byte : repaired) {
        if (byte == ' ') {
            words.emplace_back();
        } else {
            words.back() += byte;
        }
    }
    std::erase(words, "");
    if (words.empty()) {
        return "?";
    }
    const auto first = charactersOf(words.front());
    if (words.size() > 1) {
        return first.front() + charactersOf(words.back()).front();
    }
    return first.front() + (first.size() > 1 ? first[1] : "");
}

int hue(std::string_view bundleID) {
    constexpr int degrees = 360;
    return static_cast<int>(hashed(bundleID) % degrees);
}

std::string appTile(const BundleID& bundleID, std::string_view name, double points, std::string_view label) {
    const std::string style = "--hue:" + std::to_string(hue(bundleID)) + ";--points:" + pixels(points);
    return element(
        "span", spokenAs(label, {{"class", "app-icon"}, {"data-letters", initials(name)}, {"style", style}}));
}

std::string barGlyph(const BundleID& bundleID, std::string_view name) {
    const auto shape = hashed(bundleID) / 360U % shapes;
    return element("span", {{"class", "bar-glyph shape-" + std::to_string(shape)},
                            {"data-letters", initials(name)},
                            {"aria-hidden", "true"}});
}

std::string glyph(std::string_view symbol, double points, std::string_view inkClass, std::string_view label) {
    const std::string size = std::to_string(std::lround(points));
    std::string classes = "glyph";
    if (!inkClass.empty()) {
        classes += " " + std::string(inkClass);
    }
    return element(
        "svg",
        spokenAs(
            label,
            {{"class", classes}, {"data-symbol", std::string(symbol)}, {"width", size}, {"height", size}}),
        voidElement("use", {{"href", "#glyph-" + std::string(symbol)}}) + "</use>");
}

std::string_view inkClass(view::Ink ink) noexcept {
    switch (ink) {
        case view::Ink::label: return "ink-label";
        case view::Ink::accent: return "ink-accent";
        case view::Ink::warning: return "ink-warning";
        case view::Ink::wood: return "ink-wood";
        case view::Ink::straw: return "ink-straw";
        case view::Ink::soap: return "ink-soap";
        case view::Ink::sparkle: return "ink-sparkle";
    }
    return "ink-label";
}

std::string svg(const view::Drawing& drawing, double scale) {
    const Size size = drawing.size;
    return R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" + number(size.width * scale) +
           "\" height=\"" + number(size.height * scale) + "\" viewBox=\"0 0 " + number(size.width) + " " +
           number(size.height) + R"(" aria-hidden="true">)" + svgShapes(drawing) + "</svg>";
}

std::string svgShapes(const view::Drawing& drawing) {
    std::string markup;
    for (const view::Shape& shape : drawing.shapes) {
        markup += pathElement(shape);
    }
    return markup;
}

}  // namespace velko::html
