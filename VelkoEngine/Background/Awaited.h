#pragma once

#include <string>

#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

/// Timers that a person waits for. While one is pending, the system does not delay Velko's timers. A wait of
/// more than a minute may be delayed, because nobody watches it. Main thread.
namespace velko::Awaited {

/// `MainThread::after`. `what` says in a few words what is waited for.
[[nodiscard]] Task after(const Platform& platform, const std::string& what, MainThread::Uptime delay,
                         MainThread::Work work);

/// `MainThread::every`, for something that moves while a person looks at it.
[[nodiscard]] Task every(const Platform& platform, const std::string& what, MainThread::Uptime period,
                         MainThread::Work work);

}  // namespace velko::Awaited
