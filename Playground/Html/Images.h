#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "Velko/View/Drawing.h"
#include "VelkoCore/BundleID.h"

namespace velko::html {

/// How an app is called; used to letter its tile.
using NameOf = std::function<std::string(const BundleID&)>;

/// One or two letters for a name: "Options+" is "Op", "Google Drive" is "GD".
[[nodiscard]] std::string initials(std::string_view name);

/// The hue of an app's tile, 0 to 359. It follows from the identifier alone.
[[nodiscard]] int hue(std::string_view bundleID);

/// An app's icon as a page shows it: a rounded, lettered tile. `label` is spoken; empty: silent.
[[nodiscard]] std::string appTile(const BundleID& bundleID, std::string_view name, double points,
                                  std::string_view label = {});

/// An app's icon as the menu bar shows it, in the bar's own colour.
[[nodiscard]] std::string barGlyph(const BundleID& bundleID, std::string_view name);

/// A system symbol, drawn by the page's own picture of that name. `label` is spoken; empty: silent.
[[nodiscard]] std::string glyph(std::string_view symbol, double points, std::string_view inkClass = {},
                                std::string_view label = {});

/// The CSS class of an ink, as "ink-label". Whoever shows a drawing gives each class its `color`.
[[nodiscard]] std::string_view inkClass(view::Ink ink) noexcept;

/// A drawing as an SVG element, `scale` pixels to the point. It inherits everything but its size; without
/// rules for the inks it is all in the colour of the text around it.
[[nodiscard]] std::string svg(const view::Drawing& drawing, double scale = 1);

/// Only what stands inside that element, to be placed in a larger picture.
[[nodiscard]] std::string svgShapes(const view::Drawing& drawing);

}  // namespace velko::html
