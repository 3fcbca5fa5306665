#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Settings/SettingsController.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/Velko/TreeAudit.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {

/// Velko on a simulated Mac with its settings open, which a test uses as a person does.
class SettingsOnMac : public VelkoOnMac {
 protected:
    SettingsOnMac() { layout.hasCompletedSetup = true; }
    ~SettingsOnMac() override { mac.surfaces.forget(); }

    using VelkoOnMac::launch;
    ProcessID launch(const BundleID& bundleID, const std::string& name, Section section) {
        layout.place(bundleID, section);
        return mac.launch({.bundleID = bundleID, .name = name, .icons = {{.title = name}}});
    }

    void startSettings() {
        start();
        openSettings();
    }

    void openSettings() {
        broom.emplace(faceParts());
        settings.emplace(faceParts(), *broom);
        settings->show();
    }

    void restart() {
        mac.surfaces.forget();
        settings.reset();
        broom.reset();
        velko->quit();
        velko.reset();
        startWithFileAsItIs();
        openSettings();
    }

    [[nodiscard]] SimulatedSurface& window() { return mac.surfaces.surface(Surfaces::Kind::settings); }

    /// Works a control, and gives Velko time to act.
    void set(std::string_view id, const view::Input& input = {}) {
        EXPECT_TRUE(window().perform(id, input)) << id;
        pass(std::chrono::seconds(1));
    }
    void openPage(std::int64_t page) { set("pages", page); }

    [[nodiscard]] const view::Node* find(std::string_view id) {
        audit(*window().content());
        return view::find(*window().content(), id);
    }
    /// What the node with that id says; empty without it.
    [[nodiscard]] std::string words(std::string_view id) {
        const view::Node* node = find(id);
        return node == nullptr ? "" : view::spoken(*node);
    }

    /// The value of the picker or toggle with that id.
    [[nodiscard]] std::string standing(std::string_view id) {
        const view::Node* node = find(id);
        if (node == nullptr) {
            return "";
        }
        if (const auto* toggle = std::get_if<view::Toggle>(&node->content)) {
            return toggle->isOn ? "on" : "off";
        }
        const auto& picker = std::get<view::Picker>(node->content);
        return picker.selected == view::Picker::nothing ? "" : picker.options.at(picker.selected);
    }

    /// Chooses from the "•••" menu of an app.
    void choose(const BundleID& bundleID, std::size_t place) {
        EXPECT_TRUE(view::choose(view::menuOf(*window().content(), "more:" + bundleID), {place}));
        pass(std::chrono::milliseconds(200));
    }

    std::optional<BroomFrame> broom;
    std::optional<SettingsController> settings;
};

}  // namespace velko
