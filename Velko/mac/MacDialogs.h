#pragma once

#include "Velko/Ports/Dialogs.h"

namespace velko {

/// The system's own panels and alerts.
class MacDialogs final : public Dialogs {
 public:
    [[nodiscard]] Task chooseWhereToSave(const SavePanel& panel, Chosen chosen) override;
    [[nodiscard]] Task chooseFileToOpen(const OpenPanel& panel, Chosen chosen) override;
    /// Returns when the user has read it. The main loop goes on in the meantime.
    void alert(const Alert& alert) override;
    [[nodiscard]] Task ask(const Question& question, Answered answered) override;
};

}  // namespace velko
