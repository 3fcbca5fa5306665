#include <array>
#include <cstddef>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>

#include "Playground/Html/Images.h"
#include "Velko/Broom/BroomIcon.h"
#include "VelkoCore/NumberText.h"
#include "VelkoCore/Time/Timing.h"

// Prints the picture docs/pictures/broom.svg on the standard output.

namespace {

using namespace velko;

constexpr double rowHeight = 150;
constexpr double columnWidth = 236;
constexpr std::size_t columns = 6;

struct Column {
    std::string_view caption;
    BroomDrawing::Pose pose;
};
constexpr std::array<Column, columns - 1> states{{
    {.caption = "tidied up", .pose = {}},
    {.caption = "swinging over", .pose = {.tilt = Timing::broomRockDegrees * 1.2}},
    {.caption = "revealed", .pose = {.tilt = Timing::broomRockDegrees}},
    {.caption = "something to ask", .pose = {.hasDot = true}},
    {.caption = "before an audience", .pose = {.isPresenting = true}},
}};

struct Look {
    std::string_view name;
    std::string_view ground;
    std::string_view inks;
};
constexpr std::array looks{
    Look{.name = "light",
         .ground = "#f4f6f9",
         .inks = ".light{color:#1d2733}.light .ink-wood{color:#a9713c}.light .ink-straw{color:#e3a83a}"
                 ".light .ink-accent{color:#2f7fd1}.light .ink-sparkle{color:#f2c14e}"},
    Look{.name = "dark",
         .ground = "#1c222b",
         .inks = ".dark{color:#eef2f7}.dark .ink-wood{color:#c08a55}.dark .ink-straw{color:#f0bd55}"
                 ".dark .ink-accent{color:#5aa5f2}.dark .ink-sparkle{color:#ffe08a}"},
};

std::string placedAt(double x, double y, double size, const view::Drawing& drawing) {
    return "<g transform=\"translate(" + decimalText(x) + " " + decimalText(y) + ") scale(" +
           decimalText(size / drawing.size.width) + ")\">" + html::svgShapes(drawing) + "</g>\n";
}

std::string row(const Look& look, double top) {
    std::string text = "<g class=\"" + std::string(look.name) + "\">\n<rect y=\"" + decimalText(top) +
                       "\" width=\"" + decimalText(columnWidth * columns) + "\" height=\"" +
                       decimalText(rowHeight) + "\" fill=\"" + std::string(look.ground) + "\"/>\n";
    double x = 0;
    for (const Column& column : states) {
        const view::Drawing drawing = BroomDrawing::icon(column.pose);
        text += placedAt(x + 16, top + 56, 18, drawing);
        text += placedAt(x + 46, top + 48, 36, drawing);
        text += placedAt(x + 94, top + 4, 128, drawing);
        text += R"(<text fill="currentColor" x=")" + decimalText(x + 16) + R"(" y=")" +
                decimalText(top + 142) + R"(">)" + std::string(column.caption) + "</text>\n";
        x += columnWidth;
    }
    return text + placedAt(x + 54, top + 11, 128, BroomDrawing::coloured(128)) + "</g>\n";
}

std::string sheet() {
    const std::string width = decimalText(columnWidth * columns);
    const std::string height = decimalText(rowHeight * static_cast<double>(looks.size()));
    std::string text = R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" + width + "\" height=\"" +
                       height + "\" viewBox=\"0 0 " + width + " " + height +
                       R"(" role="img" aria-label="Velko's broom in each of its states, light and dark">)"
                       "\n<style>text{font:12px -apple-system,'Helvetica Neue',Arial,sans-serif}";
    for (const Look& look : looks) {
        text += look.inks;
    }
    text += "</style>\n";
    double top = 0;
    for (const Look& look : looks) {
        text += row(look, top);
        top += rowHeight;
    }
    return text + "</svg>\n";
}

}  // namespace

int main() {
    try {
        std::cout << sheet();
        return std::cout.flush() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "No picture: " << error.what() << '\n';
        return 1;
    }
}
