#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Velko/Ports/Dialogs.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// Panels that stay open until the simulated user answers.
class SimulatedDialogs final : public Dialogs {
 public:
    explicit SimulatedDialogs(MainThread& mainThread) : mainThread_(mainThread) {}

    [[nodiscard]] Task chooseWhereToSave(const SavePanel& panel, Chosen chosen) override;
    [[nodiscard]] Task chooseFileToOpen(const OpenPanel& panel, Chosen chosen) override;
    void alert(const Alert& alert) override { alerts_.push_back(alert); }

    /// The user picks a file in the newest open panel, or cancels it.
    void choose(std::optional<std::filesystem::path> file);

    /// What the newest panel suggests or says; empty while none is open.
    [[nodiscard]] std::string panelText() const;

    /// Every alert so far, oldest first.
    [[nodiscard]] const std::vector<Alert>& alerts() const noexcept { return alerts_; }

 private:
    class Panel;

    [[nodiscard]] Task open(std::string text, Chosen chosen);
    [[nodiscard]] bool isOpen() const;

    MainThread& mainThread_;
    std::shared_ptr<Panel> panel_;
    std::vector<Alert> alerts_;
};

}  // namespace velko
