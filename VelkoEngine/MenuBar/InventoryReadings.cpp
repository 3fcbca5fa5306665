#include <algorithm>
#include <iterator>
#include <optional>
#include <ranges>
#include <string>
#include <utility>
#include <vector>

#include "VelkoEngine/Background/GatheredReads.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Accessibility.h"

namespace velko::Inventory {

namespace {

using Names = std::vector<std::string>;

/// How one item looks; nothing when it does not answer.
std::optional<ItemReading> readItem(const Accessibility& accessibility, const AXElement& element,
                                    const Names& attributes) {
    // One message for all: this is done for every tucked icon every two seconds.
    const auto answers = AX::attributes(accessibility, element, attributes);
    if (std::ranges::none_of(answers, AX::isHeard)) {
        return std::nullopt;
    }
    const auto frame = AX::frame(answers[0], answers[1]);
    ItemReading reading{.text = {}, .width = frame ? frame->width : 0};
    // Empty fields stay, and the value stands where a title would use the identifier: the text must change
    // whenever one of the four attributes does.
    const char* separator = "";
    for (const AXAnswer& answer : answers | std::views::drop(2)) {
        reading.text += separator;
        reading.text += AX::text(answer);
        separator = "|";
    }
    return reading;
}

}  // namespace

Task readings(const Platform& platform, std::map<BundleID, ProcessID> apps, ReadingsHandler then) {
    using App = std::pair<BundleID, ProcessID>;
    using Reading = std::pair<BundleID, AppReading>;
    return gatherReads(
        platform.mainThread, std::vector<App>(apps.begin(), apps.end()),
        [&accessibility = platform.accessibility,
         attributes =
             Names{"AXPosition", "AXSize", "AXTitle", "AXDescription", "AXHelp", "AXValue"}](const App& app) {
            Reading reading{app.first, {.pid = app.second, .items = {}}};
            for (const AXElement& element : AX::statusItems(accessibility, app.second)) {
                if (auto item = readItem(accessibility, element, attributes)) {
                    reading.second.items.push_back(*std::move(item));
                }
            }
            return reading;
        },
        [then = std::move(then)](std::vector<Reading> perApp) {
            then(Readings(std::make_move_iterator(perApp.begin()), std::make_move_iterator(perApp.end())));
        });
}

}  // namespace velko::Inventory
