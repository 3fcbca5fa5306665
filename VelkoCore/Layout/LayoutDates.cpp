#include <chrono>
#include <map>
#include <optional>
#include <utility>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

namespace {

/// Sets back dates that lie more than a day further ahead than they can by themselves.
class SettingBack {
 public:
    void operator()(Date& date, Date furthest) {
        if (date - furthest > std::chrono::days(1)) {
            date = furthest;
            any_ = true;
        }
    }
    void operator()(std::optional<Date>& date, Date furthest) {
        if (date) {
            (*this)(*date, furthest);
        }
    }
    void operator()(std::map<BundleID, Date>& dates, Date furthest) {
        for (auto& [bundleID, date] : dates) {
            (*this)(date, furthest);
        }
    }

    [[nodiscard]] bool any() const noexcept { return any_; }

 private:
    bool any_ = false;
};

}  // namespace

bool Layout::setBackDates(Date now, Calendar calendar) {
    SettingBack setBack;
    setBack(autopilot.lastOffered, now);
    setBack(autopilot.watchingSince, now);
    setBack(lastClicked, now);
    setBack(firstSeen, now);
    const auto grace = std::chrono::duration<double>(Timing::inboxUpgradeGraceSeconds);
    setBack(knownGraceUntil, now + std::chrono::floor<std::chrono::seconds>(grace));
    setBack(autopilot.snoozedUntil, calendar.addingDays(Timing::autopilotSnoozeDays, now));
    const Date today = calendar.startOfDay(now);
    for (auto& [bundleID, days] : clickDays) {
        for (Date& day : days) {
            setBack(day, today);
        }
        bool isThere = false;
        std::erase_if(days, [&](Date day) { return day == today && std::exchange(isThere, true); });
    }
    return setBack.any();
}

}  // namespace velko
