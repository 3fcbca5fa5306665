#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Velko/App/FaceParts.h"
#include "Velko/Apps/FoundAnnouncement.h"
#include "Velko/Settings/ListedApps.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// The list of apps in the settings: what is searched for, which section shows, in which order, what is
/// selected. Main thread.
class AppList final : private NonCopyable {
 public:
    /// `changed` is called when the list must be drawn again. All that `parts` refers to outlives this.
    AppList(const FaceParts& parts, std::function<void()> changed)
        : parts_(parts),
          changed_(std::move(changed)),
          announcement_(parts.platform.mainThread, parts.ports.surfaces) {}

    /// The window opens: what was typed and selected in it before is gone, and so is the offer to undo.
    void opened();

    /// The window closes, or shows another page.
    void leave() { announcement_.cancel(); }

    /// Selects that app, whatever was filtered before.
    void pointTo(const BundleID& bundleID);

    /// The controls above the list, the list, and what there is to say below it. What can be done with a
    /// selection is above it, where a small display shows it too, and has its room there at all times: no row
    /// moves away under the pointer.
    [[nodiscard]] std::vector<view::Node> nodes();

 private:
    void look();
    void select(const view::RowIDs& rows);
    void search(const std::string& text);
    [[nodiscard]] std::vector<ListedApp> chosen(const view::RowIDs& rows) const;

    [[nodiscard]] view::Node filterPicker();
    [[nodiscard]] view::Node searchRow();
    [[nodiscard]] view::Node list();
    [[nodiscard]] std::string whyNoneIsListed() const;
    [[nodiscard]] view::Node selectionRow();
    [[nodiscard]] view::Node countRow() const;
    [[nodiscard]] std::optional<view::Node> goneRow();

    FaceParts parts_;
    std::function<void()> changed_;
    std::optional<Section> section_;  ///< absent: all
    std::string search_;
    AppOrder order_ = AppOrder::name;
    view::RowIDs selected_;
    /// The apps that were listed since the filter was chosen. One that moves to another section stays in
    /// sight.
    BundleIDs staying_;
    ListedApps listed_;
    InstalledApps installed_;
    FoundAnnouncement announcement_;
    std::size_t historyBefore_ = 0;  ///< the revision of the history when the window opened
};

}  // namespace velko
