#pragma once

#include <string>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// The user's defaults for this program. Main thread.
class Defaults : private NonCopyable {
 public:
    virtual ~Defaults() = default;

    /// A switch; off when it was never set.
    [[nodiscard]] virtual bool isOn(const std::string& key) const = 0;
    virtual void setOn(const std::string& key, bool on) = 0;
};

}  // namespace velko
