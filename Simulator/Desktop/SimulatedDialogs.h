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

    [[nodiscard]] Task ask(const Question& question, Answered answered) override;

    /// The user chooses a file in the newest open panel, or cancels it.
    void choose(std::optional<std::filesystem::path> file);
    /// The user answers the newest open question.
    void answer(bool agreed);

    /// What the newest panel suggests or says; empty while none is open.
    [[nodiscard]] std::string panelText() const;
    [[nodiscard]] const std::string& panelTitle() const noexcept { return panelTitle_; }
    /// Whether the newest panel asks where to save, not what to open.
    [[nodiscard]] bool isPanelForSaving() const noexcept { return isPanelForSaving_; }
    [[nodiscard]] bool isPanelOpen() const;
    /// The newest question; null while none is open.
    [[nodiscard]] const Question* question() const;

    /// Every alert so far, oldest first.
    [[nodiscard]] const std::vector<Alert>& alerts() const noexcept { return alerts_; }

 private:
    template <class Answer>
    class Waiting;
    using Panel = Waiting<std::optional<std::filesystem::path>>;
    using Asking = Waiting<bool>;

    [[nodiscard]] Task open(std::string title, std::string text, Chosen chosen);

    MainThread& mainThread_;
    std::string panelTitle_;
    std::string panelText_;
    bool isPanelForSaving_ = false;
    std::shared_ptr<Panel> panel_;
    Question question_;
    std::shared_ptr<Asking> asking_;
    std::vector<Alert> alerts_;
};

}  // namespace velko
