#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

/// Every fixed delay, period, threshold and animation number, each with its one name. Equal values stay
/// separate names, because each is changed on its own.
namespace velko::Timing {

using Duration = std::chrono::milliseconds;
using Seconds =
    std::chrono::duration<double>;  ///< of what moves on the screen, drawn between milliseconds too
using namespace std::chrono_literals;

// Reveal, hover, shelf and peek
inline constexpr Duration hoverRevealDelay = 300ms;  ///< how long the pointer rests on the broom first
inline constexpr Duration hoverTuckDelay = 1200ms;   ///< how long the pointer is away first
inline constexpr Duration autoTuckRetry = 1s;        ///< next try of an auto-tuck that had to wait
inline constexpr Duration autoTuckHold = 60s;        ///< how long a pointer at rest may delay it
inline constexpr Duration shelfCloseClickGrace =
    400ms;  ///< a click this soon after closing is the same click
inline constexpr Seconds shelfSpringResponse{0.42};
inline constexpr double shelfSpringDamping = 0.72;
inline constexpr Duration peekReflowDelay = 150ms;  ///< until the bar has made room for a peeking app
inline constexpr Duration peekMaxDuration = 60s;
inline constexpr Duration failedOpeningShown = 6s;  ///< how long a face says that an app does not answer
inline constexpr Duration showMeDuration = 2500ms;

// Pop-out on change
inline constexpr Duration popOutDuration = 10s;
inline constexpr Duration popOutPollInterval = 2s;
inline constexpr Duration popOutPollSeconds = popOutPollInterval;
inline constexpr Duration newIconsInterval = 60s;  ///< until an app is asked anew which icons it has
inline constexpr Duration popOutCooldownSeconds = 300s;
inline constexpr double popOutMinWidthChange = 3.0;  ///< points
inline constexpr std::size_t popOutMostInWindow = 12;
inline constexpr Duration popOutWindow = 1h;

// Live Activity
inline constexpr Duration liveActivityCheckInterval = 5s;
inline constexpr Duration liveActivityQuietSeconds = 180s;
inline constexpr std::uint64_t liveActivityMinWorkNanoseconds = 20'000'000;
inline constexpr Duration liveActivityWindowSeconds = 30s;
inline constexpr Duration liveActivityIgnoreAfterChange = 4s;  ///< after a change of our own

// Scanning, health and system events
inline constexpr std::array<Duration, 3> launchRescanDelays{2s, 5s, 15s};
inline constexpr Duration lightRescanInterval = 30s;
inline constexpr Duration healthSampleInterval = 30s;
inline constexpr double healthAverageWeight = 0.2;  ///< weight of a new sample in the running average
inline constexpr Duration systemEventDebounce = 500ms;
inline constexpr Duration wakeSettleDelay = 2s;
inline constexpr Duration axMessagingTimeout = 100ms;
inline constexpr Duration iconWatchInterval = 1s;

// Setup and permission guide
inline constexpr Duration setupDelay = 1s;  ///< from launch to the first-run setup
inline constexpr Duration trustPollInterval = 2s;
inline constexpr Duration trustCalmInterval = 10s;  ///< the same, while the permission holds
inline constexpr Duration permissionGuideFollowInterval = 300ms;
inline constexpr Duration permissionGuideDoneHold = 1200ms;
inline constexpr std::chrono::seconds inboxUpgradeGraceSeconds = 24h;
inline constexpr std::chrono::seconds inboxGoneSeconds = 7 * 24h;  ///< then Velko no longer asks about an app
inline constexpr Duration noteSpotlessHold = 1400ms;
inline constexpr Seconds noteFade{0.12};

// Saving
inline constexpr Duration managedLookInterval = 300s;  ///< between looks for what an organisation manages
inline constexpr Duration saveDelay = 5s;  ///< a burst of edits is written once, this long after the last

// Autopilot and suggestions, in days unless named otherwise
inline constexpr int autopilotWarmUpDays = 14;
inline constexpr int autopilotTuckAfterDays = 14;
inline constexpr int autopilotBuryAfterDays = 30;
inline constexpr int autopilotSnoozeDays = 30;
inline constexpr int autopilotOfferEveryDays = 7;
inline constexpr int autopilotPromoteWindowDays = 7;
inline constexpr int autopilotPromoteMinDays = 3;
inline constexpr Duration autopilotCheckInterval = 3600s;
inline constexpr int clickDaysKept = 21;

// Decorative animation
struct ClosedRange {
    Seconds lowest;
    Seconds highest;
};
inline constexpr Seconds broomRockDuration{0.7};
inline constexpr double broomRockDegrees = 16;
inline constexpr Seconds introSparkle{0.7};
inline constexpr Seconds introSwishAt{0.3};
inline constexpr Seconds introBlinkAt{0.95};
inline constexpr Seconds introSparkleAt{0.8};
inline constexpr Seconds introHopAt{1.02};
inline constexpr Duration introWipeDelay = 1380ms;
inline constexpr Seconds introWipe{0.55};
inline constexpr Seconds reducedMotionFade{0.15};
inline constexpr Seconds bubblePop{0.6};
inline constexpr ClosedRange sudsPopEvery{Seconds{0.6}, Seconds{2.2}};
inline constexpr Duration sudsFirstPop = 2200ms;

}  // namespace velko::Timing
