#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "Velko/App/FaceParts.h"
#include "Velko/Apps/FoundAnnouncement.h"
#include "Velko/View/Node.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// The page of the settings where the user says what an audience may see. Main thread.
class PresentingPage final : private NonCopyable {
 public:
    /// `changed` is called when the page looks different. All that `parts` refers to outlives this.
    PresentingPage(const FaceParts& parts, std::function<void()> changed)
        : parts_(parts),
          changed_(std::move(changed)),
          announcement_(parts.platform.mainThread, parts.ports.surfaces) {}

    [[nodiscard]] view::Node content();

    /// The user has gone to another page or has closed the window: what was typed is gone.
    void leave() {
        search_.clear();
        announcement_.cancel();
    }

 private:
    void search(const std::string& text);
    [[nodiscard]] view::Node offering(bool isLocked);
    [[nodiscard]] view::Node staying(bool isLocked);
    [[nodiscard]] std::vector<view::Node> appRows(bool isLocked);

    FaceParts parts_;
    std::function<void()> changed_;
    std::string search_;
    std::size_t found_ = 0;  ///< apps in the list that shows
    FoundAnnouncement announcement_;
};

}  // namespace velko
