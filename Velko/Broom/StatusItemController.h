#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Velko/App/FaceParts.h"
#include "Velko/Broom/BroomClicks.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Broom/MenuActions.h"
#include "Velko/Note/NoteController.h"
#include "Velko/Ports/StatusItem.h"
#include "Velko/View/Menu.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// Velko's own icon in the menu bar: shows how things stand, and turns clicks into tidying, questions and
/// menus. It holds nothing of the hiding itself. Main thread; one for the program's life.
class StatusItemController final : private NonCopyable {
 public:
    /// `frame` outlives this.
    StatusItemController(const FaceParts& parts, BroomFrame& frame);

    /// Puts the icon into the menu bar. Once.
    void start();
    /// Shows what the app controller's values say now. To be called whenever they change.
    void update();

    /// A button has gone down somewhere. Returns at once.
    void pressed(const ClickTapEvent& press);

    /// The note below the icon, made when it is first wanted.
    [[nodiscard]] NoteController& note();

    std::function<void()> onSettings;  ///< opens the settings
    std::function<void()> onClick;     ///< hears of every click, before anything else comes of it

 private:
    void clicked(const BroomClick& click);
    /// Whether a click belongs to the note: it closes it, or has just closed it on its way here.
    bool closesNote();
    void openMenu(view::Menu menu);
    void showProblem();
    void showBroom();
    void showToolTip(const std::string& text);

    FaceParts parts_;
    BroomFrame& frame_;
    BroomClicks clicks_;
    std::shared_ptr<MenuActions> actions_;  ///< gone with this, while the icon may still be clicked
    std::optional<BroomIcon> broom_;
    std::optional<bool> shownRevealed_;  ///< as the broom leans; unknown while it is not drawn
    bool showsProblem_ = false;
    std::string toolTip_;
    std::optional<NoteController> note_;
};

}  // namespace velko
