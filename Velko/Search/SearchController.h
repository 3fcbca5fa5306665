#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "Velko/App/FaceParts.h"
#include "Velko/Apps/FoundAnnouncement.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Search/AppSearch.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// The panel in which the user types to find an app in the menu bar, whatever its section, and opens its
/// menu. It only knows what the last scan has found: a keystroke asks nobody. Main thread.
class SearchController final : private NonCopyable {
 public:
    /// `broom` outlives the search.
    SearchController(const FaceParts& parts, BroomFrame& broom);

    /// Opens the panel with a text in its field, or puts the text into the open panel.
    void show(const std::string& typed);
    void close() { panel_.close(); }
    [[nodiscard]] bool isShown() const { return panel_.isOpen(); }

 private:
    void gather();
    void type(const std::string& text);
    void select(const BundleID& bundleID);
    void selectRow(const view::RowIDs& rows);
    [[nodiscard]] bool press(const view::KeyPress& key);
    void open(const BundleID& bundleID);
    void showOnly(const BundleID& bundleID);
    /// Says that an icon has to stay hidden, if that is so. Whether it is.
    bool tellsWhyKeptIn(const BundleID& bundleID);
    void openSettings(const BundleID& bundleID);
    void pressed(const AppSearch::App& app, ItemOpener::Press press);
    void refresh();
    void update() { panel_.update(content()); }
    [[nodiscard]] std::string label(const AppSearch::App& app) const;
    [[nodiscard]] view::Node row(const AppSearch::App& app, std::size_t place) const;
    [[nodiscard]] view::Node content();

    FaceParts parts_;
    BroomFrame& broom_;
    OpenSurface panel_;
    FoundAnnouncement announcement_;
    std::string typed_;
    std::vector<AppSearch::App> apps_;  ///< those in the menu bar
    AppSearch search_;                  ///< over these
    std::vector<AppSearch::App> found_;
    BundleID selected_;  ///< one of those found; empty: there is none
    bool wasShelfShown_ = false;
    std::string trouble_;                            ///< why an app could not be opened; empty: it could
    std::shared_ptr<const AppSearch::App> opening_;  ///< the app that is being opened
};

}  // namespace velko
