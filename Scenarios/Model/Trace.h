#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Scenarios/World.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::scenarios::model {

/// Something that was seen to happen.
struct Happening {
    enum class Kind { line, noteOpened, noteClosed };

    Kind kind = Kind::line;
    MainThread::Uptime at{0};
    std::string category{};  ///< of a log line
    std::string text{};      ///< of a log line, without its date
};

/// Writes down what Velko logs, and when its note opens and closes, also amid time that passes. For that it
/// takes over the main thread's `onTurn`, and passes it on. One thread.
class Trace final : private NonCopyable {
 public:
    explicit Trace(World& world);
    ~Trace();

    /// What has happened since the last call, in order.
    [[nodiscard]] std::vector<Happening> take();

 private:
    void look();

    World& world_;
    std::function<void()> nextOnTurn_;
    const std::string* last_ = nullptr;  ///< the newest line that was written down
    bool wasNoteOpen_ = false;
    std::vector<Happening> happened_;
};

}  // namespace velko::scenarios::model
