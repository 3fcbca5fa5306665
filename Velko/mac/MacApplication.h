#pragma once

#include "Velko/Ports/Application.h"

namespace velko {

/// The shared application object and the workspace.
class MacApplication final : public Application {
 public:
    [[nodiscard]] Policy policy() const override;
    void setPolicy(Policy policy) override;
    void showDockIcon() override;
    void activate() override;
    void terminate() override;
    void openFile(const std::filesystem::path& file,
                  const std::optional<std::filesystem::path>& application) override;
};

}  // namespace velko
