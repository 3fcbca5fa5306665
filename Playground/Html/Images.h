#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "Velko/View/Drawing.h"
#include "VelkoCore/Identifiers.h"

namespace velko::html {

/// Gives the name of an app. The letters on its tile come from it.
using NameOf = std::function<std::string(const BundleID&)>;

/// One or two letters for a name: "Options+" is "Op", "Google Drive" is "GD".
[[nodiscard]] std::string initials(std::string_view name);

/// The hue of an app's tile, 0 to 359. It depends on the identifier alone.
[[nodiscard]] int hue(std::string_view bundleID);

/// The icon of an app on a page: a rounded tile with letters. Screen readers say `label`; if it is empty,
/// they skip the tile.
[[nodiscard]] std::string appTile(const BundleID& bundleID, std::string_view name, double points,
                                  std::string_view label = {});

/// The icon of an app in the menu bar, in the colour of the bar.
[[nodiscard]] std::string barGlyph(const BundleID& bundleID, std::string_view name);

/// A system symbol. The page has its own picture for each name. Screen readers say `label`; if it is empty,
/// they skip the symbol.
[[nodiscard]] std::string glyph(std::string_view symbol, double points, std::string_view inkClass = {},
                                std::string_view label = {});

/// The CSS class of an ink, for instance "ink-label". The style sheet of the page sets the `color` of each
/// class.
[[nodiscard]] std::string_view inkClass(view::Ink ink) noexcept;

/// A drawing as an SVG element, `scale` pixels for each point. Without style rules for the inks it has the
/// colour of the text around it.
[[nodiscard]] std::string svg(const view::Drawing& drawing, double scale = 1);

/// The content of that element, for use in a larger picture.
[[nodiscard]] std::string svgShapes(const view::Drawing& drawing);

}  // namespace velko::html
