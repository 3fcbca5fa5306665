#pragma once

#include <string>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// The general pasteboard. Main thread.
class Pasteboard : private NonCopyable {
 public:
    virtual ~Pasteboard() = default;

    /// Replaces everything on it with a text.
    virtual void setText(const std::string& text) = 0;
};

}  // namespace velko
