#pragma once

#include <optional>
#include <string>

#include "Scenarios/World.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"

namespace velko::scenarios {

/// Rules about everything that Velko shows: everybody can use it, and it agrees with what Velko knows. One
/// thread.
class FaceRules final {
 public:
    explicit FaceRules(World& world) : world_(world) {}

    /// Looks at everything that Velko shows, when no work is due. `isCalm`: nothing has happened for so long
    /// that nothing moves any more. Returns what is wrong, in one line.
    [[nodiscard]] std::optional<std::string> check(AppController& velko, bool isCalm);

 private:
    void require(bool holds, const std::string& rule, const std::string& detail = {});
    void checkTrees();
    void checkBroom(AppController& velko, bool isCalm);
    void checkSurfaces(const AppController& velko, bool isCalm);
    void checkNote(const AppController& velko, bool isCalm);
    void checkArrow(bool isCalm);
    void checkShelf(const AppController& velko, bool isCalm);
    void checkSearch(const AppController& velko);
    void checkKeys(AppController& velko);
    void checkSettings(const AppController& velko);
    [[nodiscard]] bool isOpen(Surfaces::Kind kind) { return content(kind) != nullptr; }
    [[nodiscard]] const view::Node* content(Surfaces::Kind kind) {
        return world_.mac().surfaces.surface(kind).content();
    }

    World& world_;
    std::optional<MainThread::Uptime> dotWrongSince_;
    std::optional<std::string> breach_;
};

}  // namespace velko::scenarios
