#include "VelkoEngine/MenuBar/MenuBarItem.h"

#include <type_traits>

std::size_t std::hash<velko::MenuBarItem>::operator()(const velko::MenuBarItem& item) const noexcept {
    std::size_t mixed = 0;
    const auto mix = [&mixed](const auto& field) {
        const std::size_t one = std::hash<std::remove_cvref_t<decltype(field)>>{}(field);
        mixed ^= one + 0x9e3779b9U + (mixed << 6U) + (mixed >> 2U);
    };
    mix(item.bundleID);
    mix(item.appName);
    mix(item.pid);
    mix(item.title);
    mix(item.frame.x);
    mix(item.frame.y);
    mix(item.frame.width);
    mix(item.frame.height);
    return mixed;
}
