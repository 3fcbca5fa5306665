#include "Velko/Checks/Notes.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "VelkoCore/Files/Json.h"

namespace velko::SelfCheck {

namespace {

constexpr std::string_view wordFor(Result result) {
    switch (result) {
        case Result::ok: return "OK";
        case Result::fail: return "FAIL";
        case Result::told: break;
    }
    return "TOLD";
}

/// As wide as the longest word, so that the names stand below each other.
std::string lineOf(const Finding& finding) {
    std::string line(wordFor(finding.result));
    line.resize(5, ' ');
    line += finding.name;
    if (!finding.seen.empty()) {
        line += ": ";
        std::ranges::replace_copy(finding.seen, std::back_inserter(line), '\n', ' ');
    }
    return line;
}

Json jsonOf(const Finding& finding) {
    return {Json::Object{{"result", {std::string(wordFor(finding.result))}},
                         {"name", {finding.name}},
                         {"seen", {finding.seen}}}};
}

Json jsonOf(const SectionNotes& section) {
    Json::Array findings;
    std::ranges::transform(section.findings, std::back_inserter(findings),
                           [](const Finding& finding) { return jsonOf(finding); });
    Json::Object object{{"name", {section.name}}, {"findings", {std::move(findings)}}};
    if (!section.leftOut.empty()) {
        object.emplace("needs", Json{section.leftOut});
    }
    return {std::move(object)};
}

Json jsonOf(std::size_t number) {
    return {static_cast<std::uint64_t>(number)};
}

}  // namespace

void Notes::begin(std::string_view section) {
    sections_.push_back({.name = std::string(section), .leftOut = {}, .findings = {}});
    say("-- " + std::string(section));
}

void Notes::leaveOut(std::string_view section, std::string_view option) {
    sections_.push_back({.name = std::string(section), .leftOut = std::string(option), .findings = {}});
}

void Notes::expect(std::string name, bool passed, std::string seen) {
    note({.result = passed ? Result::ok : Result::fail, .name = std::move(name), .seen = std::move(seen)});
}

void Notes::tell(std::string name, std::string seen) {
    note({.result = Result::told, .name = std::move(name), .seen = std::move(seen)});
}

void Notes::add(const Contracts::Checks& checks) {
    for (const Contracts::Check& check : checks) {
        expect(check.name, check.passed, check.seen);
    }
}

void Notes::say(const std::string& words) const {
    if (say_) {
        say_(words);
    }
}

void Notes::note(Finding finding) {
    if (sections_.empty()) {
        begin("check");
    }
    say(lineOf(finding));
    sections_.back().findings.push_back(std::move(finding));
}

std::size_t Notes::count(Result result) const {
    std::size_t found = 0;
    for (const SectionNotes& section : sections_) {
        found += static_cast<std::size_t>(std::ranges::count(section.findings, result, &Finding::result));
    }
    return found;
}

std::string Notes::summary() const {
    std::string text = std::to_string(count(Result::ok)) + " OK, " + std::to_string(count(Result::fail)) +
                       " FAIL, " + std::to_string(count(Result::told)) + " TOLD";
    const char* separator = "; left out: ";
    for (const SectionNotes& section : sections_) {
        if (!section.leftOut.empty()) {
            text += separator;
            text += section.name;
            text += " (" + section.leftOut + ")";
            separator = ", ";
        }
    }
    return text;
}

std::string Notes::json(const About& about, bool isComplete) const {
    Json::Object facts;
    for (const auto& [name, value] : about) {
        facts.insert_or_assign(name, Json{value});
    }
    Json::Array sections;
    std::ranges::transform(sections_, std::back_inserter(sections),
                           [](const SectionNotes& section) { return jsonOf(section); });
    return Json{Json::Object{{"velkoSelfCheck", {std::int64_t{jsonVersion}}},
                             {"about", {std::move(facts)}},
                             {"isComplete", {isComplete}},
                             {"ok", jsonOf(count(Result::ok))},
                             {"failed", jsonOf(count(Result::fail))},
                             {"told", jsonOf(count(Result::told))},
                             {"sections", {std::move(sections)}}}}
        .print();
}

}  // namespace velko::SelfCheck
