#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "Velko/Flows/FlowHost.h"
#include "Velko/Ports/Dialogs.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Takes the layout to another Mac: writes it to a file of the user's choice, or merges such a file. Main
/// thread; owned by the controller.
class LayoutTransfer final {
 public:
    /// `imported` is called after a merge and told whether the layout's file holds it.
    LayoutTransfer(FlowHost& host, Dialogs& dialogs, Log& log, std::function<void(bool saved)> imported);
    LayoutTransfer(const LayoutTransfer&) = delete;
    LayoutTransfer& operator=(const LayoutTransfer&) = delete;
    ~LayoutTransfer() = default;

    // Each opens its panel, unless one is open.
    void exportLayout();
    void importLayout();

    /// The user has opened such a file: asks, and merges it.
    void offerToImport(const std::filesystem::path& file);

    /// Gives up on a panel that is open.
    void cancel() noexcept { panel_.cancel(); }

 private:
    void write(const std::filesystem::path& file);
    void read(const std::filesystem::path& file);
    void fail(const std::string& title, const std::string& reason);

    FlowHost& host_;
    Dialogs& dialogs_;
    Log& log_;
    std::function<void(bool)> imported_;
    Task panel_;
};

}  // namespace velko
