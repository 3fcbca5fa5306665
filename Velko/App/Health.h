#pragma once

#include <optional>
#include <string>
#include <string_view>

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

/// A problem in words for the user; empty for `ok`.
[[nodiscard]] constexpr std::string_view describe(Health::Kind problem) noexcept {
    switch (problem) {
        case Health::Kind::ok: break;
        case Health::Kind::needsAccessibility: return "Velko needs permission to tidy your menu bar.";
        case Health::Kind::engineUnavailable: return "Not supported on this macOS build. Nothing is hidden.";
        case Health::Kind::layoutUnreadable: return "Your layout file can't be read. Nothing is hidden.";
    }
    return {};
}

/// What a button or menu item says that opens the page where the user gives the permission.
inline constexpr auto openPermissionTitle = "Open Device Control and Data Access…";

/// What Velko says when the system has refused to hide icons. That is no problem of health: the system may
/// accept the next plan.
inline constexpr auto refusalInWords = "macOS didn't let Velko hide icons, so all of them are out.";

/// What Velko says when it is not in the Applications folder.
inline constexpr auto moveTitle = "Move Velko to Applications";
inline constexpr auto wrongPlaceInWords = "Move Velko to Applications so its icon stays visible.";

}  // namespace velko
