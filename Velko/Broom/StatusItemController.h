#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Velko/App/FaceParts.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomClicks;
class BroomFrame;
class BroomIcon;
class MenuActions;
class NoteController;
struct BroomClick;
struct ClickTapEvent;

/// Velko's own icon in the menu bar. It shows Velko's state, and turns clicks into tidying, questions and
/// menus. It hides nothing itself. Main thread; there is one as long as the program runs.
class StatusItemController final : private NonCopyable {
 public:
    /// `frame` outlives this.
    StatusItemController(const FaceParts& parts, BroomFrame& frame);
    ~StatusItemController();

    /// Puts the icon into the menu bar. To be called once.
    void start();
    /// Shows what the app controller's values say now. To be called whenever they change.
    void update();

    /// To be called when a mouse button goes down anywhere. Returns at once.
    void pressed(const ClickTapEvent& press);

    /// The note below the icon. It is made when it is first needed.
    [[nodiscard]] NoteController& note();

 private:
    void clicked(const BroomClick& click);
    /// Whether a click belongs to the note. Such a click closes the note, or it has just closed it.
    bool closesNote();
    void openMenu(bool isForDebugging);
    void showProblem();
    void showBroom();
    void showToolTip(const std::string& text);

    FaceParts parts_;
    BroomFrame& frame_;
    std::unique_ptr<BroomClicks> clicks_;
    std::shared_ptr<MenuActions> actions_;  ///< ends with this object, while the icon may still be clicked
    std::unique_ptr<BroomIcon> broom_;
    std::optional<bool> shownRevealed_;  ///< as the broom shows it; unknown while no broom is drawn
    bool showsProblem_ = false;
    std::string toolTip_;
    std::unique_ptr<NoteController> note_;
    Subscription keysPause_;  ///< while the menu is open
};

}  // namespace velko
