#pragma once

#include <functional>
#include <string>

#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Platform.h"

/// The part of the ports' contracts that needs a machine on which apps may be launched, hung and hidden.
namespace velko::Contracts {

/// A Mac that belongs to the test, and what can be made to happen on it.
struct TestMac {
    Pass pass;
    std::function<ProcessID(const BundleID&)> launch;  ///< an agent with one icon, and its identifier as name
    std::function<ProcessID(const BundleID&)> launchRegular;  ///< an app for the Dock, likewise
    std::function<void(ProcessID)> quit;
    std::function<void(ProcessID)> hang;
    std::function<void(bool)> setTrusted;
    std::function<void()> wake;
    std::function<void(const std::string&)> setZone;  ///< the machine goes to the time zone of that name
    std::function<void()> changeDisplays;
    std::function<void(ProcessID)> openMenu;
    std::function<void()> closeMenu;
    std::function<void(ProcessID)> activate;
    std::function<void(ProcessID)> click;  ///< on the middle of an app's icon
    std::function<void()> disableTaps;
    std::function<void(bool)> refuseTaps;        ///< though there is the permission
    std::function<void(ProcessID)> work;         ///< from now on the process keeps one core busy
    std::function<bool(const BundleID&)> shows;  ///< whether a person sees an app's icon
};

void checkApps(const Platform& platform, const TestMac& mac, Checks& checks);
void checkNotices(const Platform& platform, const TestMac& mac, Checks& checks);
void checkOtherAppsElements(const Platform& platform, const TestMac& mac, Checks& checks);
void checkMenus(const Platform& platform, const TestMac& mac, Checks& checks);
void checkClicks(const Platform& platform, const TestMac& mac, Checks& checks);
void checkWork(const Platform& platform, const TestMac& mac, Checks& checks);
void checkZone(const Platform& platform, const TestMac& mac, Checks& checks);
void checkAssertions(const Platform& platform, const TestMac& mac, Checks& checks);

}  // namespace velko::Contracts
