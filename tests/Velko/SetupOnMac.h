#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Setup/SetupController.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/Velko/TreeAudit.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {

/// Velko on a simulated Mac with the setup's window, which a test uses as a person does.
class SetupOnMac : public VelkoOnMac {
 protected:
    using Key = view::Shortcut::Key;

    explicit SetupOnMac(bool trusted) : VelkoOnMac({.trusted = trusted}) {}

    ~SetupOnMac() override { mac.surfaces.forget(); }

    void startSetup() {
        start();
        setup.emplace(faceParts());
        host.session = [this] { return session(); };
        velko->onChange = [this] { setup->sync(); };
        setup->show();
    }

    [[nodiscard]] SortSession session() const {
        std::vector<SortSession::App> apps;
        for (const PresentApp& app : presentApps(values())) {
            if (app.bundleID.starts_with("com.example.")) {
                apps.push_back({.bundleID = app.bundleID, .name = app.name});
            }
        }
        const bool isFirst = !values().layout.hasCompletedSetup;
        const auto& found = host.found;
        const std::map<BundleID, Section> taken = found ? found->sections : std::map<BundleID, Section>{};
        return SortSession({.apps = apps,
                            .lastClicked = values().layout.lastClicked,
                            .current = isFirst ? taken : values().layout.sections,
                            .importSource = isFirst && found ? std::optional(found->source) : std::nullopt,
                            .now = floorToSeconds(mac.mainThread.date()),
                            .calendar = {}});
    }

    [[nodiscard]] SimulatedSurface& window() { return mac.surfaces.surface(Surfaces::Kind::setup); }
    [[nodiscard]] SimulatedSurface& guide() { return mac.surfaces.surface(Surfaces::Kind::permissionGuide); }

    [[nodiscard]] bool press(Key key) { return window().press({.key = key}); }
    [[nodiscard]] bool press(char character) {
        return window().press({.key = Key::character, .character = character});
    }

    /// The step that shows, as the id of its tree.
    [[nodiscard]] std::string step() {
        audit(*window().content());
        return window().content()->id;
    }
    /// What the node with that id says; empty without it.
    [[nodiscard]] std::string words(std::string_view id) {
        const view::Node* node = view::find(*window().content(), id);
        return node == nullptr ? "" : view::spoken(*node);
    }

    std::optional<SetupController> setup;
};

/// Three apps to sort. Velko knows of two when they were last clicked.
class SetupOfThreeApps : public SetupOnMac {
 protected:
    SetupOfThreeApps() : SetupOnMac(false) {}

    void SetUp() override {
        for (const char* name : {"chat", "clock", "vpn"}) {
            mac.launch(
                {.bundleID = std::string("com.example.") + name, .name = name, .icons = {{.title = name}}});
        }
        layout.lastClicked["com.example.chat"] =
            floorToSeconds(mac.mainThread.date()) - std::chrono::days(40);
        layout.lastClicked["com.example.clock"] =
            floorToSeconds(mac.mainThread.date()) - std::chrono::days(1);
    }

    /// Shows the cards; Velko has the permission already.
    void startSorting() {
        mac.grantTrust();
        startSetup();
        ASSERT_TRUE(press(Key::enter));
    }

    [[nodiscard]] std::string card() {
        return step() != "setup:sort"
                   ? step()
                   : words("sort:place") + " " + words("sort:name") + ": " + words("sort:reason");
    }

    /// What Return chooses on the card that shows.
    [[nodiscard]] std::string proposed() {
        std::string found;
        view::walk(*window().content(), [&](const view::Node& node) {
            const auto* const button = std::get_if<view::Button>(&node.content);
            if (button != nullptr && button->shortcut.key == Key::enter) {
                found = view::spoken(node);
            }
        });
        return found;
    }

    void close() {
        window().dismiss(Surface::Dismissal::closeButton);
        pass(std::chrono::seconds(1));
    }
};

}  // namespace velko
