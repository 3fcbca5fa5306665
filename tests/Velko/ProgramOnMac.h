#pragma once

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Files/LibplistReader.h"
#include "Simulator/Machine/VelkoOnSimulatedMac.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppDelegate.h"
#include "Velko/App/Log.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "tests/TemporaryFolder.h"

namespace velko {

/// The whole program, launched and quit as a desktop does it.
class ProgramOnMac : public testing::Test {
 protected:
    ~ProgramOnMac() override { mac.surfaces.forget(); }

    void launch(const Layout& layout = {}) {
        ASSERT_TRUE(LayoutStore(file()).save(layout));
        launchAgain();
    }
    void launchAgain() {
        app = std::make_unique<AppDelegate>(AppDelegate::Parts{
            .controller = velkoOn(mac, log, LayoutStore(file(), files),
                                  {.version = "1.2", .bundlePath = "/Applications/Velko.app"}),
            .propertyLists = propertyLists,
            .homeFolder = home});
        app->didFinishLaunching();
        mac.advance(std::chrono::milliseconds(500));
    }
    void quit() {
        app->willTerminate();
        mac.advance(std::chrono::seconds(1));
        app.reset();
        mac.surfaces.forget();
    }

    [[nodiscard]] std::filesystem::path file() const { return folder.path() / "layout.json"; }
    [[nodiscard]] SimulatedSurface& surface(Surfaces::Kind kind) { return mac.surfaces.surface(kind); }
    [[nodiscard]] std::size_t placeInLog(const std::string& text) const { return log.text().find(text); }
    [[nodiscard]] static Layout setUp() {
        Layout layout;
        layout.hasCompletedSetup = true;
        return layout;
    }

    TemporaryFolder folder;
    FileCalls files;
    SimulatedMac mac;
    LibplistReader propertyLists;
    std::filesystem::path home = folder.path();
    Log log{mac.mainThread, folder.path() / "Velko.log"};
    std::unique_ptr<AppDelegate> app;
};

}  // namespace velko
