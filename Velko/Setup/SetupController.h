#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "Velko/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/Setup/IntroPlayer.h"
#include "Velko/Setup/PermissionGuide.h"
#include "Velko/Setup/SetupFlow.h"
#include "Velko/Setup/SetupSteps.h"
#include "VelkoCore/BundleID.h"
#include "VelkoCore/Importers.h"
#include "VelkoCore/Section.h"
#include "VelkoCore/SortSession.h"
#include "VelkoEngine/Ports/Subscription.h"

namespace velko {

/// The setup's window: the introduction and the permission at the first run, and the sort of all apps, also
/// later on. Nothing is changed before "Apply to Menu Bar"; a window that is closed half-way keeps its
/// answers until it is shown again. Main thread.
class SetupController final {
 public:
    explicit SetupController(const FaceParts& parts);
    SetupController(const SetupController&) = delete;
    SetupController& operator=(const SetupController&) = delete;
    ~SetupController();

    /// Opens the window or brings it to the front. Once the setup is complete, it begins with the cards.
    void show();
    [[nodiscard]] bool isShown() const { return window_.isOpen(); }

    // To be set before `show`.

    std::function<void()> onVisibilityChange;
    /// The apps to sort, with what is suggested for each. Asked once the menu bar is known.
    std::function<SortSession()> makeSession;
    /// What another organiser left. Asked right after `makeSession`, at the first run only.
    std::function<std::optional<ImportedLayout>()> imported;
    /// Stores the user's answers.
    std::function<void(const std::map<BundleID, Section>&)> apply;

 private:
    void prepare();
    [[nodiscard]] SetupActions actions();
    void change(const std::function<void(SetupFlow&)>& change);
    void goOn();
    void openPermission();
    void permissionDone();
    void applyAnswers();
    void update();
    void refresh();
    void beginIfKnown();
    void closed();
    [[nodiscard]] bool isTrusted() const;
    [[nodiscard]] view::Node tree();

    FaceParts parts_;
    Surface& window_;
    SetupFlow flow_{SetupFlow::Kind::first};
    PermissionGuide guide_;
    IntroPlayer intro_;
    std::shared_ptr<Subscription> changes_;  ///< from the opening until it is known to have closed
};

}  // namespace velko
