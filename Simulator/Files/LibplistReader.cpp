#include "Simulator/Files/LibplistReader.h"

#include <cstdlib>
#include <memory>
#include <plist/plist.h>
#include <string_view>
#include <type_traits>
#include <utility>

#include "VelkoCore/Import/PropertyListChecks.h"

namespace velko {

namespace {

using Converted = std::expected<PropertyList, PropertyListError>;

struct FreeNode {
    void operator()(void* node) const noexcept { plist_free(node); }
};
struct FreeMemory {
    void operator()(void* memory) const noexcept { std::free(memory); }
};
using OwnedNode = std::unique_ptr<void, FreeNode>;
using OwnedText = std::unique_ptr<char, FreeMemory>;
using OwnedIterator = std::unique_ptr<void, FreeMemory>;

/// Turns the library's tree into ours and counts while doing so.
class Conversion {
 public:
    Converted convert(plist_t node, std::size_t depth) {
        if (const auto error = PropertyListBudget::checkDepth(depth)) {
            return std::unexpected(*error);
        }
        if (const auto error = budget_.addNodes(1)) {
            return std::unexpected(*error);
        }
        switch (plist_get_node_type(node)) {
            case PLIST_BOOLEAN: return boolean(node);
            case PLIST_UINT: return integer(node);
            case PLIST_REAL: return real(node);
            case PLIST_STRING: return text(node);
            case PLIST_DATA: return data(node);
            case PLIST_DATE: return date(node);
            case PLIST_ARRAY: return array(node, depth);
            case PLIST_DICT: return dictionary(node, depth);
            case PLIST_KEY:
            case PLIST_UID:
            case PLIST_NONE: break;
        }
        return PropertyList{PropertyList::Other{}};
    }

 private:
    static Converted boolean(plist_t node) {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return PropertyList{value != 0};
    }

    /// Numbers above the signed range become reals; the others fit.
    static Converted integer(plist_t node) {
        std::uint64_t value = 0;
        plist_get_uint_val(node, &value);
        if (std::in_range<std::int64_t>(value) || isWrittenNegative(node)) {
            return PropertyList{static_cast<std::int64_t>(value)};
        }
        return PropertyList{static_cast<double>(value)};
    }

    /// The library returns a negative number as its two's complement. Only its XML shows that the number is
    /// negative.
    static bool isWrittenNegative(plist_t node) {
        char* text = nullptr;
        std::uint32_t length = 0;
        plist_to_xml(node, &text, &length);
        const OwnedText owner{text};
        return text != nullptr && std::string_view{text, length}.find("<integer>-") != std::string_view::npos;
    }

    static Converted real(plist_t node) {
        double value = 0;
        plist_get_real_val(node, &value);
        return PropertyList{value};
    }

    static Converted date(plist_t node) {
        constexpr std::chrono::sys_days libraryEpoch = std::chrono::January / 1 / 2001;
        std::int32_t seconds = 0;
        std::int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return PropertyList{Date{libraryEpoch + std::chrono::seconds{seconds}}};
    }

    Converted text(plist_t node) {
        std::uint64_t length = 0;
        const char* characters = plist_get_string_ptr(node, &length);
        if (const auto error = budget_.addPayload(length)) {
            return std::unexpected(*error);
        }
        return PropertyList{characters == nullptr ? std::string{} : std::string{characters, length}};
    }

    Converted data(plist_t node) {
        std::uint64_t length = 0;
        const char* start = plist_get_data_ptr(node, &length);
        if (const auto error = budget_.addPayload(length)) {
            return std::unexpected(*error);
        }
        const auto bytes = std::as_bytes(std::span{start, start == nullptr ? 0 : length});
        return PropertyList{PropertyList::Data(bytes.begin(), bytes.end())};
    }

    Converted array(plist_t node, std::size_t depth) {
        PropertyList::Array elements;
        plist_array_iter iterator = nullptr;
        plist_array_new_iter(node, &iterator);
        const OwnedIterator owner{iterator};
        while (true) {
            plist_t element = nullptr;
            plist_array_next_item(node, iterator, &element);
            if (element == nullptr) {
                return PropertyList{std::move(elements)};
            }
            Converted converted = convert(element, depth + 1);
            if (!converted) {
                return converted;
            }
            elements.push_back(*std::move(converted));
        }
    }

    Converted dictionary(plist_t node, std::size_t depth) {
        PropertyList::Dictionary elements;
        plist_dict_iter iterator = nullptr;
        plist_dict_new_iter(node, &iterator);
        const OwnedIterator owner{iterator};
        while (true) {
            char* keyText = nullptr;
            plist_t element = nullptr;
            plist_dict_next_item(node, iterator, &keyText, &element);
            const OwnedText key{keyText};
            if (element == nullptr || !key) {
                return PropertyList{std::move(elements)};
            }
            const std::string_view name{key.get()};
            auto error = budget_.addNodes(1);
            error = error ? error : budget_.addPayload(name.size());
            if (error) {
                return std::unexpected(*error);
            }
            Converted converted = convert(element, depth + 1);
            if (!converted) {
                return converted;
            }
            elements.insert_or_assign(std::string{name}, *std::move(converted));
        }
    }

    PropertyListBudget budget_;
};

}  // namespace

std::expected<PropertyList, PropertyListError> LibplistReader::read(std::span<const std::byte> bytes) const {
    if (bytes.size() > PropertyListLimits::bytes) {
        return std::unexpected(PropertyListError::tooLarge);
    }
    const auto* start = reinterpret_cast<const char*>(bytes.data());
    const auto size = static_cast<std::uint32_t>(bytes.size());
    plist_t root = nullptr;
    plist_from_memory(start, size, &root);
    const OwnedNode owner{root};
    if (root == nullptr) {
        return std::unexpected(PropertyListError::malformed);
    }
    return Conversion{}.convert(root, 1);
}

}  // namespace velko
