#include <algorithm>
#include <string_view>
#include <utility>

#include "Playground/Html/Markup.h"
#include "Playground/Html/Views.h"
#include "Playground/Web/Desktop.h"
#include "Playground/Web/Picture.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"

namespace velko::web {

namespace {

using html::Attribute;
using html::element;
using html::textElement;

std::string button(std::string_view title, std::string_view classes, std::string_view action,
                   std::string_view body) {
    return textElement("button",
                       {{"type", "button"},
                        {"class", "button " + std::string(classes)},
                        {"data-action", std::string(action)},
                        {"data-body", std::string(body)}},
                       title);
}

/// The title bar of a window. `closes` says what its button closes, `label` what screen readers call the
/// button.
std::string titleBar(std::string_view title, Attribute closes, std::string_view label) {
    return element("div", {{"class", "title-bar"}},
                   element("button", {{"type", "button"},
                                      {"class", "close-button"},
                                      std::move(closes),
                                      {"aria-label", std::string(label)}}) +
                       textElement("span", {{"class", "window-title"}}, title));
}

std::string sheet(std::string_view title, std::string_view message, const std::string& rest) {
    return textElement("h2", {{"id", "sheet-title"}}, title) +
           (message.empty() ? "" : textElement("p", {{"class", "sheet-message"}}, message)) + rest;
}

std::string buttons(const std::string& markup) {
    return element("div", {{"class", "sheet-buttons"}}, markup);
}

std::string savePanel(const SimulatedDialogs& dialogs) {
    const std::string field =
        element("label", {{"class", "sheet-field"}},
                "Save as" + html::voidElement("input", {{"type", "text"},
                                                        {"id", "sheet-file"},
                                                        {"maxlength", "100"},
                                                        {"autocomplete", "off"},
                                                        {"spellcheck", "false"},
                                                        {.name = "data-mine"},
                                                        {"value", dialogs.panelText()}}));
    return sheet(dialogs.panelTitle(), "In the Documents folder of this playground.",
                 field + buttons(button("Cancel", "standard", "panel", "{}") +
                                 button("Save", "primary", "panel", R"({"file":"#sheet-file"})")));
}

std::string openPanel(const SimulatedDialogs& dialogs, const std::vector<std::string>& names) {
    std::string files;
    for (const std::string& name : names) {
        files += element("label", {{"class", "sheet-file"}},
                         html::voidElement("input", {{"type", "radio"},
                                                     {"name", "sheet-open"},
                                                     {.name = "data-mine"},
                                                     {"value", name},
                                                     Attribute::flag("checked", name == names.front())}) +
                             textElement("span", {}, name));
    }
    const std::string list =
        files.empty()
            ? textElement("p", {{"class", "secondary"}}, "The Documents folder holds no file yet.")
            : element("div", {{"class", "sheet-files"}, {"role", "radiogroup"}, {"aria-label", "Files"}},
                      files);
    const std::string pasted = element(
        "label", {{"class", "sheet-field"}},
        "Or paste a file\u2019s text, broken or not" +
            element("textarea",
                    {{"id", "sheet-text"}, {"rows", "4"}, {"spellcheck", "false"}, {.name = "data-mine"}}));
    return sheet(dialogs.panelTitle(), dialogs.panelText(),
                 list + pasted +
                     buttons(button("Cancel", "standard", "panel", "{}") +
                             button("Open", "primary", "panel", R"({"open":true})")));
}

}  // namespace

html::NameOf namesOn(Session& session) {
    return [&session](const BundleID& bundleID) {
        const auto& running = session.mac().processes.running();
        const auto found =
            std::ranges::find(running, bundleID, [](const auto& process) { return process.app.bundleID; });
        if (found != running.end() && !found->app.name.empty()) {
            return found->app.name;
        }
        return scenarios::nameOf(bundleID);
    };
}

std::string drawSurface(Session& session, const Surfaces::Traits& surface) {
    const auto* opening = session.mac().surfaces.surface(surface.kind).opening();
    if (opening == nullptr) {
        return {};
    }
    const html::NameOf names = namesOn(session);
    const std::string bar = surface.isWindow()
                                ? titleBar(opening->title, {"data-close", std::string(surface.name)}, "Close")
                                : "";
    return bar + element("div", {{"class", "surface-content"}},
                         html::treeMarkup(opening->content, {.surface = surface.name, .nameOf = names}));
}

std::string drawSystemSettings(Session& session) {
    if (!session.systemSettings().isOpen()) {
        return {};
    }
    const std::string bar = titleBar("System Settings", {"data-action", "settings"}, "Close System Settings");
    const std::string velko = element(
        "label", {{"class", "toggle"}},
        html::voidElement("input", {{"type", "checkbox"},
                                    {"role", "switch"},
                                    {"data-fact", "trusted"},
                                    {"data-on", "trust grant"},
                                    {"data-off", "trust revoke"},
                                    Attribute::flag("checked", session.mac().accessibility.isTrusted())}) +
            element("span", {{"class", "system-app"}},
                    html::appTile("app.velko.mac", "Velko", 26) + " Velko"));
    return bar + element("div", {{"class", "system-list"}},
                         textElement("p", {{"class", "secondary"}},
                                     "Allow the apps below to control this Mac and read its data.") +
                             element("div", {{"class", "group-content"}}, velko));
}

std::string drawMenu(Session& session) {
    const auto menus = session.menus();
    return menus.empty() ? "" : html::menuMarkup(menus.front().items, namesOn(session));
}

std::string drawSheet(Session& session) {
    const SimulatedDialogs& dialogs = session.mac().dialogs;
    if (const auto* alert = session.alert()) {
        return sheet(alert->title, alert->message, buttons(button("OK", "primary", "alert", "{}")));
    }
    if (const auto* question = dialogs.question()) {
        return sheet(question->title, question->message,
                     buttons(button(question->cancel, "standard", "answer", R"({"agreed":false})") +
                             button(question->confirm, "primary", "answer", R"({"agreed":true})")));
    }
    if (!dialogs.isPanelOpen()) {
        return {};
    }
    return dialogs.isPanelForSaving() ? savePanel(dialogs)
                                      : openPanel(dialogs, documentNames(session.world().documents()));
}

}  // namespace velko::web
