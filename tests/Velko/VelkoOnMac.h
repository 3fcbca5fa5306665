#pragma once

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Ports/AppPorts.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/TemporaryFolder.h"

namespace velko {

/// Velko on a simulated Mac, as a test tells its story. Whatever the story, what must always hold is
/// checked whenever time passes.
class VelkoOnMac : public testing::Test {
 protected:
    /// Times are told exactly here, so the Mac lets Velko have no naps.
    explicit VelkoOnMac(const SimulatedMacOptions& options = {}) : mac(options) {
        mac.mainThread.isNapping = nullptr;
    }

    ~VelkoOnMac() override { mac.onMenuBarChange = nullptr; }

    ProcessID launch(const BundleID& bundleID, Section section) {
        layout.place(bundleID, section);
        return launch(bundleID);
    }

    ProcessID launch(const BundleID& bundleID) {
        return mac.launch({.bundleID = bundleID, .name = bundleID, .icons = {{.title = bundleID}}});
    }

    /// Starts Velko with `layout` in its file, and lets it tidy.
    void start() {
        ASSERT_TRUE(LayoutStore(file()).save(layout));
        startWithFileAsItIs();
    }

    void startWithFileAsItIs() {
        velko = std::make_unique<AppController>(AppController::Parts{
            .platform = mac.platform(),
            .ports = mac.appPorts(),
            .log = log,
            .store = LayoutStore(file(), files),
            .engine = std::make_unique<AssessmentEngine>(mac.platform()),
            .info = {.version = "1.2", .systemVersion = "27.0", .bundlePath = bundlePath}});
        mac.onMenuBarChange = [this] { watchForGap(); };
        velko->start();
        pass(std::chrono::seconds(3));
    }

    void pass(MainThread::Uptime duration) {
        mac.advance(duration);
        EXPECT_TRUE(shows(velko->ownBundleID())) << "the broom is hidden";
        EXPECT_EQ(mac.visibleSystemItems(), systemItems);
    }

    /// Once no activation is under way, what the system does follows from Velko's state.
    void expectSettled() { EXPECT_EQ(velko->engine().current(), velko->currentPlan()); }

    [[nodiscard]] bool shows(const BundleID& bundleID) const {
        return std::ranges::count(mac.visibleIcons(), bundleID) > 0;
    }

    [[nodiscard]] bool logged(std::string_view text) const {
        return log.text().find(text) != std::string::npos;
    }

    [[nodiscard]] int timesLogged(std::string_view text) const {
        return static_cast<int>(std::ranges::count_if(
            log.lines(), [&](const std::string& line) { return line.find(text) != std::string::npos; }));
    }

    [[nodiscard]] Layout saved() const { return **LayoutStore(file()).load(); }

    [[nodiscard]] const AppValues& values() const { return velko->values(); }

    [[nodiscard]] std::filesystem::path file() const { return folder.path() / "Velko" / "layout.json"; }

    void write(const std::string& content) const {
        std::filesystem::create_directories(file().parent_path());
        writeFile(file(), content);
    }

    /// Between two hiding plans there is never a moment without an assertion.
    void watchForGap() {
        if (!mac.framework.inForce() && !velko->engine().current().isShowAll()) {
            mac.mainThread.happen({}, [this] {
                EXPECT_TRUE(velko->engine().current().isShowAll()) << "icons flashed up between two plans";
            });
        }
    }

    TemporaryFolder folder;
    SimulatedMac mac;
    FileCalls files = mac.fileCalls();
    std::vector<std::string> systemItems = mac.visibleSystemItems();
    Log log{mac.mainThread, folder.path() / "Velko.log", mac.fileCalls()};
    Layout layout;
    std::string bundlePath = "/Applications/Velko.app";
    std::unique_ptr<AppController> velko;
};

}  // namespace velko
