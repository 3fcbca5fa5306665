#include "Velko/Apps/ChangeWords.h"

#include "Velko/Apps/MenuBarApps.h"

namespace velko::ChangeWords {

namespace {

std::string inTitle(const Apps& apps) {
    return apps.count == 1 ? inSentence(apps.name) : std::to_string(apps.count) + " Apps";
}

/// The beginning of a sentence: "Slack is", "4 apps are".
std::string subject(const Apps& apps) {
    return apps.count == 1 ? inSentence(apps.name) + " is" : std::to_string(apps.count) + " apps are";
}

}  // namespace

UndoHistory::Change placed(const Apps& apps, Section section) {
    switch (section) {
        case Section::bar:
            return {.title = "Keep " + inTitle(apps) + " in the Bar", .done = subject(apps) + " in the bar."};
        case Section::tucked: return {.title = "Tuck " + inTitle(apps), .done = subject(apps) + " tucked."};
        case Section::buried: break;
    }
    return {.title = "Bury " + inTitle(apps), .done = subject(apps) + " buried."};
}

UndoHistory::Change forgotten(const Apps& apps) {
    return {.title = "Forget " + inTitle(apps), .done = subject(apps) + " forgotten."};
}

UndoHistory::Change sorted() {
    return {.title = "Sort", .done = "Your apps are sorted.", .cause = HistoryCause::sort};
}

UndoHistory::Change imported(const std::string& layoutName) {
    return {.title = "Import", .done = "“" + layoutName + "” is imported.", .cause = HistoryCause::import};
}

UndoHistory::Change restored(const std::string& when) {
    return {
        .title = "Restore", .done = "The layout of " + when + " is back.", .cause = HistoryCause::restore};
}

UndoHistory::Change putOff(const std::string& appName) {
    const std::string app = inSentence(appName);
    return {.title = "Put Off " + app, .done = "Velko asks about " + app + " again in a month."};
}

UndoHistory::Change askedAgain(const std::string& appName) {
    const std::string app = inSentence(appName);
    return {.title = "Ask About " + app, .done = "Velko may suggest something for " + app + " again."};
}

UndoHistory::Change kept(const std::string& appName, bool keeps) {
    if (!keeps) {
        return askedAgain(appName);
    }
    const std::string app = inSentence(appName);
    return {.title = "Always Keep " + app, .done = app + " always stays where it is."};
}

}  // namespace velko::ChangeWords
