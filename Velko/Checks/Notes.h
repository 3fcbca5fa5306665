#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Contracts/Contracts.h"

/// What the self-check finds out, as lines for people and as JSON.
namespace velko::SelfCheck {

enum class Result {
    ok,
    fail,
    told,  ///< a fact that nobody could know before; right or wrong is decided by whoever reads it
};

/// One line of the report.
struct Finding {
    Result result = Result::told;
    std::string name;
    std::string seen;

    bool operator==(const Finding&) const = default;
};

/// What came of a section, or why it did not run.
struct SectionNotes {
    std::string name;
    std::string leftOut;  ///< the option that it needs and that was not given; empty: it ran
    std::vector<Finding> findings;
};

/// Collects the findings of the sections, and says each line at once: a check may take minutes, and a fault
/// of the program must not take the lines before it along. Main thread.
class Notes final : private NonCopyable {
 public:
    /// `say` gets each line without its end.
    explicit Notes(std::function<void(const std::string&)> say = {}) : say_(std::move(say)) {}

    /// What follows belongs to that section.
    void begin(std::string_view section);
    void leaveOut(std::string_view section, std::string_view option);

    void expect(std::string name, bool passed, std::string seen = {});
    void tell(std::string name, std::string seen);
    void add(const Contracts::Checks& checks);
    /// Says something to the person at the Mac. It is no finding.
    void say(const std::string& words) const;

    [[nodiscard]] const std::vector<SectionNotes>& sections() const noexcept { return sections_; }
    [[nodiscard]] std::size_t count(Result result) const;
    [[nodiscard]] bool hasFailed() const { return count(Result::fail) > 0; }

    /// The last line for people: it counts the findings, and names what was left out.
    [[nodiscard]] std::string summary() const;

    /// Facts about the run itself, by name.
    using About = std::vector<std::pair<std::string, std::string>>;
    static constexpr int jsonVersion = 1;
    /// Everything as JSON. `isComplete` is false while sections are still to come.
    [[nodiscard]] std::string json(const About& about, bool isComplete) const;

 private:
    void note(Finding finding);

    std::function<void(const std::string&)> say_;
    std::vector<SectionNotes> sections_;
};

}  // namespace velko::SelfCheck
