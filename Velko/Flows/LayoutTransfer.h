#pragma once

#include <expected>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Velko/Flows/FlowHost.h"
#include "Velko/Ports/Dialogs.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;
class Workspace;
struct LayoutExport;

/// Takes the layout to another Mac, and puts one in the place of a layout that cannot be read. One panel or
/// question at a time. Main thread; owned by the controller.
class LayoutTransfer final : private NonCopyable {
 public:
    /// `imported` is called after a merge.
    LayoutTransfer(FlowHost& host, const Workspace& workspace, Dialogs& dialogs, Log& log,
                   std::function<void()> imported);

    // Each opens its panel, unless one is open. An import says what it will change, and asks, before it does.
    void exportLayout();
    void importLayout();

    // The same without a panel. On an error nothing has changed, and the error says why in words for people.
    [[nodiscard]] std::expected<void, std::string> exportTo(const std::filesystem::path& file);
    [[nodiscard]] std::expected<void, std::string> importFrom(const std::filesystem::path& file);

    /// The user has opened such a file: asks, and merges it. While something else is open, it waits its turn.
    void offerToImport(const std::filesystem::path& file);

    /// Asks, unless a panel is open, and gives up the layout that cannot be read; its file is kept beside
    /// the new one. `then` is called when that is done.
    void offerToStartAfresh(const std::function<void()>& then);

 private:
    [[nodiscard]] Dialogs::Chosen then(void (LayoutTransfer::*use)(const std::filesystem::path&));
    void askAboutNext();
    void write(const std::filesystem::path& file);
    void askToTakeOver(const std::filesystem::path& file);
    void takeOver(const LayoutExport& layout, const std::filesystem::path& file);
    [[nodiscard]] bool startAfresh();
    void fail(const std::string& title, const std::string& reason);

    FlowHost& host_;
    const Workspace& workspace_;
    Dialogs& dialogs_;
    Log& log_;
    std::function<void()> imported_;
    std::vector<std::filesystem::path> opened_;  ///< whose questions are still unanswered, oldest first
    Task panel_;
};

}  // namespace velko
