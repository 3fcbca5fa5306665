#include "Simulator/SimulatedDialogs.h"

#include <utility>

namespace velko {

class SimulatedDialogs::Panel final : public Task::Handle {
 public:
    Panel(std::string text, Chosen chosen) : text_(std::move(text)), chosen_(std::move(chosen)) {}

    void cancel() noexcept override { chosen_ = nullptr; }
    [[nodiscard]] bool isPending() const noexcept override { return static_cast<bool>(chosen_); }

    [[nodiscard]] const std::string& text() const noexcept { return text_; }
    void answer(std::optional<std::filesystem::path> file) {
        if (const auto chosen = std::exchange(chosen_, nullptr)) {
            chosen(std::move(file));
        }
    }

 private:
    std::string text_;
    Chosen chosen_;
};

Task SimulatedDialogs::chooseWhereToSave(const SavePanel& panel, Chosen chosen) {
    return open(panel.suggestedName, std::move(chosen));
}

Task SimulatedDialogs::chooseFileToOpen(const OpenPanel& panel, Chosen chosen) {
    return open(panel.message, std::move(chosen));
}

Task SimulatedDialogs::open(std::string text, Chosen chosen) {
    panel_ = std::make_shared<Panel>(std::move(text), std::move(chosen));
    return Task(panel_);
}

void SimulatedDialogs::choose(std::optional<std::filesystem::path> file) {
    if (isOpen()) {
        mainThread_.post([panel = panel_, file = std::move(file)] { panel->answer(file); });
    }
}

std::string SimulatedDialogs::panelText() const {
    return isOpen() ? panel_->text() : std::string();
}

bool SimulatedDialogs::isOpen() const {
    return panel_ && panel_->isPending();
}

}  // namespace velko
