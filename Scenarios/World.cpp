#include "Scenarios/World.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/Machine/VelkoOnSimulatedMac.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "Velko/App/AppDelegate.h"
#include "Velko/App/AppMenu.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutStore.h"

namespace velko::scenarios {

namespace {

constexpr std::size_t broom = 0;  ///< the first of Velko's icons

/// The file system's calls, on a disk that is full while `isFull`.
FileCalls diskThatMayBeFull(FileCalls calls, const bool& isFull) {
    calls.open = [&isFull, open = calls.open](const char* path, int flags, unsigned mode) {
        if (isFull && (flags & O_ACCMODE) != O_RDONLY) {
            errno = ENOSPC;
            return -1;
        }
        return open(path, flags, mode);
    };
    return calls;
}

/// Puts `before` in front of a call: it says whether the call is made.
template <class Call>
void guard(Call& call, const std::function<bool()>& before) {
    call = [next = call, before](auto... arguments) -> decltype(call(arguments...)) {
        if (!before()) {
            errno = EIO;
            return -1;
        }
        return next(arguments...);
    };
}

/// The file system's calls of a process that may be killed between any two of them, or within one.
FileCalls callsOfTheMortal(FileCalls calls, std::optional<std::size_t>& left) {
    const auto isAlive = [&left] {
        const bool lives = !left || *left > 0;
        if (left && lives) {
            --*left;
        }
        return lives;
    };
    guard(calls.fsync, isAlive);
    guard(calls.rename, isAlive);
    guard(calls.unlink, isAlive);
    guard(calls.mkdir, isAlive);
    guard(calls.ftruncate, isAlive);
    calls.open = [isAlive, open = calls.open](const char* path, int flags, unsigned mode) {
        if ((flags & O_ACCMODE) != O_RDONLY && !isAlive()) {
            errno = EIO;
            return -1;
        }
        return open(path, flags, mode);
    };
    calls.write = [&left, isAlive, write = calls.write](int file, const void* data,
                                                        std::size_t size) -> std::ptrdiff_t {
        if (left == 1) {
            left = 0;
            return write(file, data, size / 2);
        }
        if (!isAlive()) {
            errno = EIO;
            return -1;
        }
        return write(file, data, size);
    };
    return calls;
}

std::filesystem::path made(std::filesystem::path folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);  // if this fails, the log stays in memory
    return folder;
}

}  // namespace

World::World(std::filesystem::path folder, const SimulatedMacOptions& options)
    : passTime([this](MainThread::Uptime duration) { mac_.advance(duration); }),
      folder_(made(std::move(folder))),
      mac_(options),
      log_(mac_.mainThread, folder_ / "Velko.log", mac_.fileCalls()) {
    mac_.removeIcon(mac_.processes.ownPID(), broom);
}

World::~World() {
    mac_.onMenuBarChange = nullptr;
}

AppController* World::velko() noexcept {
    return velko_ ? &velko_->controller() : nullptr;
}

void World::startVelko() {
    if (velko_) {
        return;
    }
    SimulatedZone::readAtLaunch();
    const ProcessID own = mac_.processes.ownPID();
    mac_.addIcon(own, mac_.processes.find(own)->app.icons.at(broom), broomPlace_);
    velko_ = std::make_unique<AppDelegate>(AppDelegate::Parts{
        .controller = velkoOn(
            mac_, log_,
            LayoutStore(layoutFile(),
                        callsOfTheMortal(diskThatMayBeFull(mac_.fileCalls(), savingFails), callsUntilDeath)),
            {.version = VELKO_VERSION,
             .build = VELKO_BUILD,
             .channel = VELKO_CHANNEL,
             .systemVersion = "27.0 (simulated)",
             .bundlePath = "/Applications/Velko.app"},
            {.file = managedFile(), .owner = ::geteuid()}),
        .propertyLists = propertyLists_,
        .homeFolder = folder_});
    if (onStart) {
        onStart(velko_->controller());
    }
    velko_->didFinishLaunching();
}

std::vector<AppMenu::Menu> World::menus() {
    return velko_ ? velko_->menus() : std::vector<AppMenu::Menu>();
}

bool World::reopenVelko() {
    if (velko_) {
        velko_->reopen(mac_.surfaces.isWindowOpen());
    }
    return velko_ != nullptr;
}

bool World::openAddress(const std::string& address) {
    if (velko_) {
        velko_->openAddress(address);
    }
    return velko_ != nullptr;
}

void World::quitVelko() {
    if (velko_) {
        velko_->willTerminate();
        crashVelko();
    }
}

void World::crashVelko() {
    if (velko_) {
        if (onEnd) {
            onEnd();
        }
        velko_.reset();
        mac_.surfaces.forget();
        mac_.hotKeys.forget();
        mac_.statusItem.closeMenu();
        mac_.application.now = Application::Policy::accessory;
        mac_.application.isTerminating = false;
        const auto& slots = mac_.menuBar().slots();
        const auto own = std::ranges::find(slots, mac_.processes.ownPID(), &SimulatedMenuBar::Slot::pid);
        broomPlace_ = static_cast<std::size_t>(own - slots.begin());
        mac_.removeIcon(mac_.processes.ownPID(), broom);
    }
}

}  // namespace velko::scenarios
