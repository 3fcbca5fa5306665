#include "Playground/Html/Markup.h"

#include <cmath>

#include "VelkoCore/NumberText.h"
#include "VelkoEngine/Text/Text.h"

namespace velko::html {

namespace {

std::string startTag(std::string_view name, const Attributes& attributes) {
    std::string text = "<" + std::string(name);
    for (const Attribute& attribute : attributes) {
        if (attribute.isThere) {
            text += " " + std::string(attribute.name) + "=\"" + escaped(attribute.value) + "\"";
        }
    }
    return text + ">";
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : repairedUtf8(text)) {
        switch (character) {
            case '&': result += "&amp;"; break;
            case '<': result += "&lt;"; break;
            case '>': result += "&gt;"; break;
            case '"': result += "&quot;"; break;
            case '\'': result += "&#39;"; break;
            case '\n':
            case '\t': result += character; break;
            default:
                if (static_cast<unsigned char>(character) < 0x20U || character == 0x7F) {
                    result += "\uFFFD";
                } else {
                    result += character;
                }
        }
    }
    return result;
}

std::string element(std::string_view name, const Attributes& attributes, std::string_view markup) {
    return startTag(name, attributes).append(markup).append("</").append(name).append(">");
}

std::string voidElement(std::string_view name, const Attributes& attributes) {
    return startTag(name, attributes);
}

std::string textElement(std::string_view name, const Attributes& attributes, std::string_view text) {
    return element(name, attributes, escaped(text));
}

std::string pixels(double points) {
    const double tenths = std::isfinite(points) ? std::round(points * 10) / 10 : 0;
    return decimalText(tenths == 0 ? 0 : tenths) + "px";
}

}  // namespace velko::html
