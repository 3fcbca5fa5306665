#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Velko/App/FaceParts.h"
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
    void find();
    void refresh();
    void open(const BundleID& bundleID);
    void pressed(const AppSearch::App& app, ItemOpener::Press press);
    [[nodiscard]] view::Node content();

    FaceParts parts_;
    BroomFrame& broom_;
    OpenSurface panel_;
    std::string typed_;
    std::vector<AppSearch::App> apps_;  ///< those in the menu bar
    AppSearch search_;                  ///< over these
    std::vector<AppSearch::App> found_;
    std::string trouble_;                            ///< why an app could not be opened; empty: it could
    std::shared_ptr<const AppSearch::App> opening_;  ///< the app that is being opened
};

}  // namespace velko
