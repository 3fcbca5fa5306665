#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// Whether the system opens this program when the user logs in. Main thread.
class LoginItem : private NonCopyable {
 public:
    enum class Status { notRegistered, enabled, requiresApproval, notFound };

    virtual ~LoginItem() = default;

    /// Asked anew at every call: the user may change it in the system's settings.
    [[nodiscard]] virtual Status status() const = 0;

    /// Registers this program with the system or takes it back; the system's words when it refuses.
    [[nodiscard]] virtual std::expected<void, std::string> setEnabled(bool enabled) = 0;
};

/// The status as the log says it: "requires approval".
[[nodiscard]] std::string_view describe(LoginItem::Status status) noexcept;

}  // namespace velko
