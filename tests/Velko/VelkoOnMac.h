#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Simulator/Machine/VelkoOnSimulatedMac.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "Velko/App/FaceParts.h"
#include "Velko/App/Log.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/ManagedLayoutFile.h"
#include "VelkoCore/Sorting/SortSession.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/TemporaryFolder.h"

namespace velko {

/// Counts what faces tell the program. The test says how to show the note and which apps to sort.
class CountingHost final : public FaceHost {
 public:
    void onClick() override {}
    void onNote() override { showNote(); }
    void onSettings() override { ++settings; }
    void onSettingsOf(const BundleID& bundleID) override { settingsOf.push_back(bundleID); }
    void onSearch(const std::string& typed) override { searches.push_back(typed); }
    void onResort() override { ++resorts; }
    void onPermission() override { ++permissions; }
    void onMoveToApplications() override { ++moves; }
    void onVisibilityChange() override { ++visibilityChanges; }
    [[nodiscard]] SortSession makeSession() override { return session(); }
    [[nodiscard]] std::optional<ImportedLayout> imported() const override { return found; }

    int settings = 0;
    int resorts = 0;
    int permissions = 0;
    int moves = 0;
    int visibilityChanges = 0;
    std::vector<std::string> searches;
    std::vector<BundleID> settingsOf;
    std::function<void()> showNote;
    std::function<SortSession()> session;
    std::optional<ImportedLayout> found;
};

/// Velko on a simulated Mac. Whenever time passes, it checks what must always hold.
class VelkoOnMac : public testing::Test {
 protected:
    /// Tests measure times exactly, so this Mac never slows down Velko's timers.
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
        velko = std::make_unique<AppController>(
            velkoOn(mac, log, LayoutStore(file(), files),
                    {.version = "1.2", .systemVersion = "27.0", .bundlePath = bundlePath}, managed));
        mac.onMenuBarChange = [this] { watchForGap(); };
        velko->start();
        pass(std::chrono::seconds(3));
    }

    [[nodiscard]] FaceParts faceParts() {
        return {.controller = *velko,
                .platform = mac.platform(),
                .ports = mac.appPorts(),
                .log = log,
                .host = host};
    }

    void pass(MainThread::Uptime duration) {
        mac.advance(duration);
        EXPECT_TRUE(shows(velko->ownBundleID())) << "the broom is hidden";
        EXPECT_EQ(mac.visibleSystemItems(), systemItems);
    }

    /// When no activation is under way, the system does what follows from Velko's state.
    void expectSettled() { EXPECT_EQ(velko->engine().current(), velko->currentPlan()); }

    [[nodiscard]] bool shows(const BundleID& bundleID) const {
        return std::ranges::count(mac.visibleIcons(), bundleID) > 0;
    }

    [[nodiscard]] bool logged(std::string_view text) const {
        return log.text().find(text) != std::string::npos;
    }

    [[nodiscard]] int timesLogged(std::string_view text) const {
        return static_cast<int>(std::ranges::count_if(
            log.lines(), [&](std::string_view line) { return line.find(text) != std::string::npos; }));
    }

    [[nodiscard]] Layout saved() const { return **LayoutStore(file()).load(); }

    [[nodiscard]] const AppValues& values() const { return velko->values(); }

    [[nodiscard]] std::filesystem::path file() const { return folder.path() / "Velko" / "layout.json"; }

    void write(const std::string& content) const {
        std::filesystem::create_directories(file().parent_path());
        writeFile(file(), content);
    }

    /// Between two plans that hide, there is always an assertion.
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
    ManagedLayoutFile managed;
    std::vector<std::string> systemItems = mac.visibleSystemItems();
    Log log{mac.mainThread, folder.path() / "Velko.log", mac.fileCalls()};
    Layout layout;
    std::string bundlePath = "/Applications/Velko.app";
    std::unique_ptr<AppController> velko;
    CountingHost host;
};

}  // namespace velko
