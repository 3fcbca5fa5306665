#pragma once

#include <expected>
#include <functional>
#include <optional>
#include <string>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Layout/ManagedLayout.h"
#include "VelkoCore/Layout/ManagedLayoutFile.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Beat;
class Log;

/// Reads what the organisation manages on this Mac: at the start, and again from time to time, because nobody
/// tells when an administrator has placed another file. Main thread; owned by the controller.
class ManagedWatch final : private NonCopyable {
 public:
    /// `changed` is called after a later look that has found something else. All references outlive this.
    ManagedWatch(FlowHost& host, MainThread& mainThread, Log& log, ManagedLayoutFile file,
                 std::function<void()> changed);

    /// Adds its looks to the beat.
    void start(Beat& beat);

    /// Reads the file now, and tells nobody. For the moments before a layout is loaded.
    void read();

    /// Reads the file in the background.
    void look();

 private:
    using Outcome = std::expected<std::optional<ManagedLayout::Found>, std::string>;

    bool take(Outcome outcome);
    void tell() const;

    FlowHost& host_;
    MainThread& mainThread_;
    Log& log_;
    ManagedLayoutFile file_;
    std::function<void()> changed_;
    Outcome last_;  ///< at first: there is no file
    Task reading_;
};

}  // namespace velko
