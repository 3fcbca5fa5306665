#pragma once

#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <vector>

#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutHistory.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// The window with the layouts of earlier days: when and why each was kept, what differs from now, and a
/// button that restores it. It belongs to the settings. Main thread.
class EarlierLayoutsWindow final : private NonCopyable {
 public:
    explicit EarlierLayoutsWindow(const FaceParts& parts);

    /// Opens the window or brings it to the front.
    void show();

    /// The settings close, and this goes with them.
    void close() { window_.close(); }

 private:
    using Found = std::expected<std::vector<EarlierLayout>, FileError>;

    void look();
    void update();
    void restore(const HistoryEntry& entry);
    [[nodiscard]] view::Node tree();
    [[nodiscard]] view::Node row(const EarlierLayout& earlier);
    [[nodiscard]] std::vector<view::Node> rows();

    FaceParts parts_;
    OpenSurface window_;
    Found found_;
    std::size_t revision_ = 0;            ///< of what is kept, when `found_` was read
    std::size_t undoableSince_ = 0;       ///< the revision of the undo history when the window opened
    std::optional<std::string> failure_;  ///< why the last restore failed
};

}  // namespace velko
