#include "Simulator/Desktop/SimulatedDialogs.h"

#include <utility>

namespace velko {

template <class Answer>
class SimulatedDialogs::Waiting final : public Task::Handle {
 public:
    explicit Waiting(std::function<void(Answer)> answered) : answered_(std::move(answered)) {}

    void cancel() noexcept override { answered_ = nullptr; }
    [[nodiscard]] bool isPending() const noexcept override { return static_cast<bool>(answered_); }

    void answer(Answer answer) {
        if (const auto answered = std::exchange(answered_, nullptr)) {
            answered(std::move(answer));
        }
    }

 private:
    std::function<void(Answer)> answered_;
};

Task SimulatedDialogs::chooseWhereToSave(const SavePanel& panel, Chosen chosen) {
    isPanelForSaving_ = true;
    return open(panel.title, panel.suggestedName, std::move(chosen));
}

Task SimulatedDialogs::chooseFileToOpen(const OpenPanel& panel, Chosen chosen) {
    isPanelForSaving_ = false;
    return open(panel.title, panel.message, std::move(chosen));
}

Task SimulatedDialogs::open(std::string title, std::string text, Chosen chosen) {
    panelTitle_ = std::move(title);
    panelText_ = std::move(text);
    panel_ = std::make_shared<Panel>(std::move(chosen));
    return Task(panel_);
}

Task SimulatedDialogs::ask(const Question& question, Answered answered) {
    question_ = question;
    asking_ = std::make_shared<Asking>(std::move(answered));
    return Task(asking_);
}

void SimulatedDialogs::choose(std::optional<std::filesystem::path> file) {
    if (isPanelOpen()) {
        mainThread_.post([panel = panel_, file = std::move(file)] { panel->answer(file); });
    }
}

void SimulatedDialogs::answer(bool agreed) {
    if (question()) {
        mainThread_.post([asking = asking_, agreed] { asking->answer(agreed); });
    }
}

std::string SimulatedDialogs::panelText() const {
    return isPanelOpen() ? panelText_ : std::string();
}

const Dialogs::Question* SimulatedDialogs::question() const {
    return asking_ && asking_->isPending() ? &question_ : nullptr;
}

bool SimulatedDialogs::isPanelOpen() const {
    return panel_ && panel_->isPending();
}

}  // namespace velko
