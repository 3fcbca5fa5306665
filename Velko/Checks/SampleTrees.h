#pragma once

#include <functional>
#include <string>

#include "Velko/Checks/Subject.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Node.h"

namespace velko::SelfCheck {

/// A tree that Velko really shows.
struct Sample {
    std::string name;  ///< such as "note with 12 questions"
    Surfaces::Kind kind = Surfaces::Kind::note;
    view::Node tree;
    view::Menu menu{};  ///< what a right click on the broom showed before; empty: there was none
};

/// Runs Velko on an imaginary Mac in a folder of its own, works it as a user does, and calls `visit` with
/// each tree that it shows. The tree's functions work only within that call. Takes some seconds.
void visitSamples(const Subject& subject, const std::function<void(const Sample&)>& visit);

}  // namespace velko::SelfCheck
