#include "Velko/Commands/CommandDesk.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Commands/Reports.h"
#include "Velko/Ports/Dialogs.h"
#include "VelkoEngine/Text/Text.h"

namespace velko {

using commands::Answer;
using commands::Call;
using commands::Kind;
using commands::Reply;
using commands::Verb;

namespace {

constexpr std::size_t longestShown = 120;  ///< bytes of an address, in a dialog or in the log

/// The address as people may see it.
std::string shownAddress(const std::string& address) {
    const std::string safe = printable(address.substr(0, longestShown));
    return address.size() > longestShown ? safe + "…" : safe;
}

/// Files are named by their whole paths: nobody here knows the caller's folder.
bool areFilesWhole(const Call& call) {
    const auto& wanted = commands::rowOf(call.verb).arguments;
    for (std::size_t index = 0; index < call.arguments.size() && index < wanted.size(); ++index) {
        if (wanted.at(index).kind == Kind::file && !call.arguments[index].starts_with('/')) {
            return false;
        }
    }
    return true;
}

std::chrono::seconds timeoutOf(const Call& call) {
    const auto given = call.options.find("--timeout");
    std::int64_t seconds = CommandDesk::usualTimeout.count();
    if (given != call.options.end()) {
        const std::string& text = given->second;
        std::from_chars(text.data(), text.data() + text.size(), seconds);
    }
    return std::chrono::seconds(seconds);
}

/// What an address asks for, as a question's message says it.
std::string wishOf(const Call& call, const FaceParts& parts) {
    if (call.verb == Verb::ask) {
        return call.argument(0) == "on" ? "asks about each new icon from now on."
                                        : "does not ask about new icons any more.";
    }
    if (call.verb == Verb::present) {
        return call.argument(0) == "on" ? "hides all icons but those that an audience may see."
                                        : "ends presenting, so that your icons show again.";
    }
    const auto app = commands::appMeant(parts, call.argument(0), true);
    const std::string name = printable(app ? app->name : call.argument(0));
    const std::string& section = call.argument(1);
    return section == "bar"      ? "keeps the icons of " + name + " in the bar."
           : section == "tucked" ? "tucks the icons of " + name + "."
                                 : "buries the icons of " + name + ".";
}

}  // namespace

void CommandDesk::open() {
    const auto opened = parts_.ports.commands.open(
        {.asked = [this](Caller caller, const std::string& line) { asked(caller, line); },
         .left = [this](Caller caller) { waiting_.erase(caller); }});
    if (!opened) {
        parts_.log.log("commands", "nobody can give commands: " + opened.error());
    }
}

void CommandDesk::close() {
    waiting_.clear();
    question_.cancel();
    parts_.ports.commands.close();
}

void CommandDesk::asked(Caller caller, const std::string& line) {
    const auto words = commands::readRequest(line);
    const auto call = words ? commands::parse(*words) : std::unexpected(words.error());
    const bool isOurs = call && commands::rowOf(call->verb).place == commands::Place::velko;
    if (!isOurs || !areFilesWhole(*call)) {
        finish(caller, {.status = commands::status::notUnderstood,
                        .error = !call    ? call.error()
                                 : isOurs ? "A file needs its whole path."
                                          : "That is for the caller itself to answer."});
        return;
    }
    carryOut(caller, *call);
}

void CommandDesk::carryOut(Caller caller, const Call& call) {
    if (call.verb == Verb::open) {
        openApp(caller, call.argument(0));
    } else if (call.verb == Verb::waitUntil) {
        waitUntil(caller, call);
    } else if (call.verb == Verb::log && call.has("-f")) {
        followLog(caller);
    } else {
        finish(caller, commands::perform(call, parts_));
    }
}

void CommandDesk::followLog(Caller caller) {
    const auto send = [this, caller](const std::string& text) {
        parts_.ports.commands.send(caller,
                                   commands::answerLines({.kind = Answer::Kind::out, .text = text + "\n"}));
    };
    send(parts_.log.text());
    waiting_[caller] = {.lines = parts_.log.follow(send)};
}

void CommandDesk::openApp(Caller caller, const std::string& text) {
    const auto app = commands::appMeant(parts_, text, false);
    if (!app) {
        finish(caller, commands::refusal(app.error()));
        return;
    }
    if (const auto why = whyKeptIn(parts_.controller, app->bundleID, parts_.platform.workspace)) {
        finish(caller, commands::refusal(*why));
        return;
    }
    const auto opening = std::make_shared<bool>(true);
    const auto failure = [this, bundleID = app->bundleID](bool isRunning) {
        const AppNames names(parts_.controller.values(), parts_.platform.workspace);
        return describe(FailedOpening{.bundleID = bundleID, .isRunning = isRunning}, names);
    };
    waiting_[caller] = {.opening = opening};
    giveUpAfter(caller, openingTimeout, failure(true));
    parts_.controller.open(
        app->bundleID, [this, caller, failure, weak = std::weak_ptr(opening)](ItemOpener::Press press) {
            if (weak.expired()) {
                return;  // nobody waits for it any more
            }
            finish(caller, press == ItemOpener::Press::menuOpens
                               ? Reply()
                               : commands::refusal(failure(press != ItemOpener::Press::notRunning)));
        });
}

void CommandDesk::waitUntil(Caller caller, const Call& call) {
    const bool isTidy = call.argument(0) == "tidy";
    waiting_[caller] = {.isReached = isTidy ? commands::isTidy : commands::isRevealed};
    giveUpAfter(caller, timeoutOf(call), isTidy ? "The bar is not tidy yet." : "The icons are not out yet.");
    sync();
}

void CommandDesk::giveUpAfter(Caller caller, MainThread::Uptime time, const std::string& why) {
    waiting_[caller].timeout = parts_.platform.mainThread.after(
        time, [this, caller, why] { finish(caller, commands::refusal(why)); });
}

void CommandDesk::sync() {
    std::vector<Caller> served;
    for (const auto& [caller, wait] : waiting_) {
        if (wait.isReached != nullptr && wait.isReached(parts_.controller)) {
            served.push_back(caller);
        }
    }
    for (const Caller caller : served) {
        finish(caller, {});
    }
}

void CommandDesk::finish(Caller caller, const Reply& reply) {
    std::string lines;
    lines += commands::answerLines({.kind = Answer::Kind::out, .text = reply.out});
    if (!reply.error.empty()) {
        lines += commands::answerLines({.kind = Answer::Kind::error, .text = reply.error + "\n"});
    }
    lines += commands::answerLines({.kind = Answer::Kind::exit, .status = reply.status});
    parts_.ports.commands.send(caller, lines);
    parts_.ports.commands.hangUp(caller);
    waiting_.erase(caller);
}

// Addresses

void CommandDesk::openAddress(const std::string& address) {
    const std::string shown = shownAddress(address);
    if (areTooMany()) {
        if (!std::exchange(isFlooded_, true)) {
            tellAddress("too many at once", shown);
        }
        return;
    }
    isFlooded_ = false;
    const auto call = commands::parseAddress(address);
    if (!call) {
        tellAddress(call.error(), shown);
        return;
    }
    if (commands::rowOf(call->verb).address == commands::AddressRight::afterAsking) {
        askAbout(shown, *call);
        return;
    }
    if (const Reply reply = commands::perform(*call, parts_); reply.status != commands::status::done) {
        tellAddress(reply.error, shown);
    }
}

bool CommandDesk::areTooMany() {
    const auto now = parts_.platform.mainThread.now();
    while (!addresses_.empty() && now - addresses_.front() >= addressPeriod) {
        addresses_.pop_front();
    }
    if (addresses_.size() >= mostAddresses) {
        return true;
    }
    addresses_.push_back(now);
    return false;
}

/// One question at a time: a page that opens many addresses can't bury the user in dialogs.
void CommandDesk::askAbout(const std::string& shown, const Call& call) {
    if (question_.isPending()) {
        tellAddress("another one still waits for an answer", shown);
        return;
    }
    if (call.verb == Verb::place) {
        if (const auto app = commands::appMeant(parts_, call.argument(0), true); !app) {
            tellAddress("no such app", shown);
            return;
        }
    }
    parts_.ports.application.activate();
    question_ = parts_.ports.dialogs.ask(
        {.title = "Let an address change your layout?",
         .message =
             "Something has opened the address “" + shown + "”. If you agree, Velko " + wishOf(call, parts_),
         .confirm = "Agree",
         .cancel = "Cancel"},
        [this, shown, call](bool agreed) {
            tellAddress(agreed ? "agreed to" : "not agreed to", shown);
            const Reply reply = agreed ? commands::perform(call, parts_) : Reply();
            if (reply.status != commands::status::done) {
                parts_.ports.dialogs.alert({.title = "That didn't work.", .message = reply.error});
            }
        });
}

void CommandDesk::tellAddress(std::string_view what, const std::string& shown) {
    parts_.log.log("commands", "address " + shown + ": " + std::string(what));
}

}  // namespace velko
