#pragma once

#include <string>

#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

/// Timers that a person waits for: while one is pending, the system lets none of Velko's come late. Nobody
/// sits through more than a minute; such a wait may be stretched. Main thread.
namespace velko::Awaited {

/// `MainThread::after`. `what` says in a few words what is waited for.
[[nodiscard]] Task after(const Platform& platform, const std::string& what, MainThread::Uptime delay,
                         MainThread::Work work);

/// `MainThread::every`, for what moves while somebody looks.
[[nodiscard]] Task every(const Platform& platform, const std::string& what, MainThread::Uptime period,
                         MainThread::Work work);

}  // namespace velko::Awaited
