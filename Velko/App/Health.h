#pragma once

#include <optional>
#include <string>

namespace velko {

/// Whether Velko can hide anything, and if not, why.
struct Health {
    enum class Kind { ok, needsAccessibility, engineUnavailable, layoutUnreadable };

    Kind kind = Kind::ok;
    std::string message;  ///< with `layoutUnreadable`: the reading error in words

    [[nodiscard]] bool isOk() const noexcept { return kind == Kind::ok; }

    bool operator==(const Health&) const = default;
};

/// The problems that may stand at the same time. Each comes and goes on its own.
struct HealthFacts {
    bool engineUnavailable = false;
    std::optional<std::string> layoutUnreadable;
    bool trustMissing = false;

    bool operator==(const HealthFacts&) const = default;

    /// The gravest problem that stands.
    [[nodiscard]] Health health() const {
        if (engineUnavailable) {
            return {.kind = Health::Kind::engineUnavailable, .message = {}};
        }
        if (layoutUnreadable) {
            return {.kind = Health::Kind::layoutUnreadable, .message = *layoutUnreadable};
        }
        if (trustMissing) {
            return {.kind = Health::Kind::needsAccessibility, .message = {}};
        }
        return {};
    }
};

}  // namespace velko
