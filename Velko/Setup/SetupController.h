#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/Setup/IntroPlayer.h"
#include "Velko/Setup/PermissionGuide.h"
#include "Velko/Setup/SetupFlow.h"
#include "Velko/Setup/SetupSteps.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Sorting/SortSession.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The setup's window: the introduction and the permission at the first run, and the sort of all apps, also
/// later on. Nothing is changed before "Apply to Menu Bar"; a window that is closed half-way keeps its
/// answers until it is shown again, but none that is older than where the user has put the app since.
/// Main thread.
class SetupController final : private NonCopyable {
 public:
    explicit SetupController(const FaceParts& parts);
    ~SetupController();

    /// Opens the window or brings it to the front. Once the setup is complete, it begins with the cards.
    void show();
    [[nodiscard]] bool isShown() const { return window_.isOpen(); }
    /// Shows what holds now. To be called when the system has taken a plan; it hears of changed values
    /// itself.
    void sync();

    /// Opens the system's settings where the permission is given, with a guide to the list.
    void openPermission();

    // To be set before `show`.

    std::function<void()> onVisibilityChange;
    /// The apps to sort, with what is suggested for each. Asked once the menu bar is known, and again when
    /// one of them has been placed in another way.
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
    void permissionDone();
    void applyAnswers();
    void update();
    void announceCard();
    void beginIfKnown();
    [[nodiscard]] bool isNoLongerWanted() const;
    void closed();
    [[nodiscard]] bool isTrusted() const;
    [[nodiscard]] view::Node tree();
    [[nodiscard]] view::Node noCards(const SetupActions& actions) const;
    [[nodiscard]] std::size_t placesWithoutCard(const ImportedLayout& found,
                                                const SortSession& session) const;

    FaceParts parts_;
    Surface& window_;
    SetupFlow flow_{SetupFlow::Kind::first};
    PermissionGuide guide_;
    IntroPlayer intro_;
    BundleID announced_;                     ///< whose card has been spoken of last
    std::shared_ptr<Subscription> changes_;  ///< from the opening until it is known to have closed
};

}  // namespace velko
