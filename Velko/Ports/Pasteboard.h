#pragma once

#include <string>

namespace velko {

/// The general pasteboard. Main thread.
class Pasteboard {
 public:
    Pasteboard() = default;
    Pasteboard(const Pasteboard&) = delete;
    Pasteboard& operator=(const Pasteboard&) = delete;
    virtual ~Pasteboard() = default;

    /// Replaces everything on it with a text.
    virtual void setText(const std::string& text) = 0;
};

}  // namespace velko
