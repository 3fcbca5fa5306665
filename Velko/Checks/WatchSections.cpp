#include <algorithm>
#include <chrono>
#include <cstddef>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "Velko/Checks/Subject.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Watching/IconWatch.h"

namespace velko::SelfCheck {

namespace {

using namespace std::chrono_literals;

constexpr auto observing = 60s;

/// How a timer of one second came.
struct Beats {
    std::size_t count = 0;
    MainThread::Uptime longestGap{};

    [[nodiscard]] std::string words() const {
        return std::to_string(count) + " beats in a minute, the longest wait " + milliseconds(longestGap);
    }
};

Beats beatsInAMinute(const Subject& subject) {
    MainThread& thread = subject.platform.mainThread;
    Beats beats;
    auto last = thread.now();
    const Task beating = thread.every(1s, [&] {
        const auto now = thread.now();
        beats.longestGap = std::max(beats.longestGap, now - last);
        last = now;
        ++beats.count;
    });
    subject.pass(observing);
    beats.longestGap = std::max(beats.longestGap, thread.now() - last);
    return beats;
}

/// Adds what the icon watch says, and counts who has changed and who has told of it.
class IconNotes final {
 public:
    void add(const std::string& line) {
        const auto nameIn = [&](std::string_view mark, std::string_view before) {
            const auto start = line.find(before) + before.size();
            return line.starts_with(mark) ? line.substr(start, line.find_first_of(": ", start) - start)
                                          : std::string();
        };
        if (const auto changed = nameIn("CHANGED ", "CHANGED "); !changed.empty()) {
            changed_.insert(changed);
        }
        if (const auto notified = nameIn("NOTIFIED ", ": "); !notified.empty()) {
            notified_.insert(notified);
            kinds_.insert(notified + " " + line.substr(9, line.find(':') - 9));
        }
        if (line.starts_with("no notifications of ")) {
            refused_.insert(line.substr(20, line.find(':') - 20));
        }
    }

    void tell(Notes& notes) const {
        notes.tell("icons that changed", words(changed_));
        notes.tell("apps that told of a change", words(notified_));
        notes.tell("what they told", words(kinds_));
        notes.tell("apps that could not be listened to", words(refused_));
        std::set<std::string> silent;
        std::ranges::set_difference(changed_, notified_, std::inserter(silent, silent.end()));
        notes.tell("icons that changed without a word", words(silent));
    }

 private:
    static std::string words(const std::set<std::string>& names) {
        return names.empty() ? "none" : joined({names.begin(), names.end()});
    }

    std::set<std::string> changed_;
    std::set<std::string> notified_;
    std::set<std::string> kinds_;
    std::set<std::string> refused_;
};

}  // namespace

void watch(const Subject& subject, Notes& notes) {
    notes.say("This takes two minutes.");
    notes.tell("a timer of one second, without an activity", beatsInAMinute(subject).words());

    const Subscription awake = subject.platform.activity.begin("Velko checks this Mac");
    IconNotes icons;
    std::optional<IconWatch> iconWatch;
    if (isSurelyTrusted(subject.platform)) {
        iconWatch.emplace(subject.platform, [&icons](const std::string& line) { icons.add(line); }).start();
    }
    const Beats beats = beatsInAMinute(subject);
    iconWatch.reset();
    notes.expect("with an activity a timer of one second comes on time",
                 beats.count >= 58 && beats.longestGap < 2s, beats.words());
    if (isSurelyTrusted(subject.platform)) {
        icons.tell(notes);
    } else {
        notes.tell("icons", "not watched: there is no permission");
    }
}

void checkSignature(const Subject& subject, Notes& notes) {
    const std::string& bundle = subject.info.bundlePath;
    const auto run = [&](std::vector<std::string> arguments) {
        return subject.bench == nullptr ? std::nullopt : subject.bench->runTool(std::move(arguments));
    };
    const auto verified = run({"/usr/bin/codesign", "--verify", "--strict", "--verbose=2", bundle});
    const auto shown = run({"/usr/bin/codesign", "--display", "--verbose=2", bundle});
    if (!verified || !shown) {
        notes.tell("the signature", "codesign cannot be started");
        return;
    }
    notes.expect("the bundle is sealed", verified->status == 0, verified->output);
    const std::string wanted = "Identifier=" + subject.info.bundleID + "\n";
    notes.expect("the signature has the bundle's identifier", shown->output.find(wanted) != std::string::npos,
                 shown->output);
}

}  // namespace velko::SelfCheck
