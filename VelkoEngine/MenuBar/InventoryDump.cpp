#include "VelkoEngine/MenuBar/InventoryDump.h"

#include <array>
#include <cstddef>

#include "VelkoCore/NumberText.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/Accessibility.h"

namespace velko::Inventory {

namespace {

/// Host elements deeper than this are written without their children.
constexpr int deepestHostExpansion = 4;

std::string roleOf(const Accessibility& accessibility, const AXElement& element) {
    return AX::string(accessibility, element, "AXRole").value_or("?");
}

std::string indentation(int depth) {
    std::string blanks(static_cast<std::size_t>(depth) * 2, ' ');
    return blanks;
}

/// One element as a line, without its end.
std::string elementLine(const Accessibility& accessibility, const AXElement& element, const std::string& role,
                        int depth) {
    std::string line = indentation(depth) + role;
    if (const auto subrole = AX::string(accessibility, element, "AXSubrole")) {
        line += "/" + *subrole;
    }
    if (const auto identifier = AX::string(accessibility, element, "AXIdentifier")) {
        line += " id=" + *identifier;
    }
    line += " \"" + AX::title(accessibility, element) + "\"";
    if (const auto frame = AX::frame(accessibility, element)) {
        line += " @" + wholeText(frame->x) + "," + wholeText(frame->y) + " " + wholeText(frame->width) + "x" +
                wholeText(frame->height);
    }
    return line;
}

/// Writes one app's tree.
class AppDump final {
 public:
    AppDump(const Accessibility& accessibility, int maxDepth)
        : accessibility_(accessibility), maxDepth_(maxDepth) {}

    void tree(const AXElement& element, int depth) {
        text_ += elementLine(accessibility_, element, roleOf(accessibility_, element), depth) + "\n";
        if (depth < maxDepth_) {
            for (const AXElement& child : AX::children(accessibility_, element)) {
                tree(child, depth + 1);
            }
        }
    }

    /// The elements that an app's own element names besides its children.
    void appExtras(const AXElement& app) {
        static constexpr std::array attributes{"AXExtrasMenuBar", "AXFocusedWindow", "AXMainWindow"};
        for (const char* const attribute : attributes) {
            if (const auto element = AX::element(accessibility_, app, attribute)) {
                text_ += std::string("  [") + attribute + "]\n";
                tree(*element, 2);
            }
        }
        text_ += "  attributes: ";
        const auto names = accessibility_.attributeNames(app).value_or(std::vector<std::string>{});
        for (std::size_t index = 0; index < names.size(); ++index) {
            text_ += (index == 0 ? "" : ", ") + names[index];
        }
        text_ += "\n";
    }

    [[nodiscard]] const std::string& text() const noexcept { return text_; }

 private:
    const Accessibility& accessibility_;
    int maxDepth_;
    std::string text_;
};

/// Adds an element of the host's tree as a line. Returns whether its children follow below it.
bool appendHostElement(std::string& text, const Accessibility& accessibility, const Walked& walked,
                       ProcessID hostPID) {
    const auto role = walked.element != nullptr ? roleOf(accessibility, *walked.element) : "?";
    text += walked.element != nullptr ? elementLine(accessibility, *walked.element, role, walked.depth)
                                      : indentation(walked.depth) + role + " \"\"";
    if (walked.pid && *walked.pid != hostPID) {
        text += " pid=" + std::to_string(*walked.pid);
    }
    text += "\n";
    return role == "AXApplication" ? walked.depth == 0 : walked.depth <= deepestHostExpansion;
}

}  // namespace

std::string axDump(const Platform& platform, ProcessID pid, int maxDepth) {
    const AXElement app = AX::application(platform.accessibility, pid);
    AppDump dump(platform.accessibility, maxDepth);
    dump.tree(app, 0);
    dump.appExtras(app);
    return dump.text();
}

std::string menuBarAgentDump(const Platform& platform) {
    const auto hostPID = AX::menuBarHostPID(platform);
    if (!hostPID) {
        return "MenuBarAgent process not found";
    }
    std::string text = "MenuBarAgent pid " + std::to_string(*hostPID) + "\n";
    walkOthers(platform, AX::application(platform.accessibility, *hostPID), 0, [&](const Walked& walked) {
        return appendHostElement(text, platform.accessibility, walked, *hostPID);
    });
    return text;
}

}  // namespace velko::Inventory
