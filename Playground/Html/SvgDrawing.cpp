#include "Playground/Html/SvgDrawing.h"

#include <cmath>

#include "VelkoEngine/Text/NumberText.h"

namespace velko::playground {

namespace {

/// A thousandth of a point is finer than any screen.
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

std::string element(const view::Shape& shape) {
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
    std::string shapes;
    for (const view::Shape& shape : drawing.shapes) {
        shapes += element(shape);
    }
    return shapes;
}

}  // namespace velko::playground
