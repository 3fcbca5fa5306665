#include "VelkoCore/Import/PropertyListBudget.h"

namespace velko {

std::optional<PropertyListError> PropertyListBudget::addNodes(std::size_t count) noexcept {
    if (count > PropertyListLimits::nodes - nodes_) {
        return PropertyListError::tooManyNodes;
    }
    nodes_ += count;
    return std::nullopt;
}

std::optional<PropertyListError> PropertyListBudget::addPayload(std::size_t bytes) noexcept {
    if (bytes > PropertyListLimits::payload - payload_) {
        return PropertyListError::tooLarge;
    }
    payload_ += bytes;
    return std::nullopt;
}

std::optional<PropertyListError> PropertyListBudget::checkDepth(std::size_t depth) noexcept {
    return depth > PropertyListLimits::depth ? std::optional{PropertyListError::tooDeep} : std::nullopt;
}

std::optional<PropertyListError> PropertyListBudget::add(const PropertyList& list, std::size_t depth) {
    if (const auto error = checkDepth(depth)) {
        return error;
    }
    if (const auto error = addNodes(1)) {
        return error;
    }
    if (const auto* text = list.as<std::string>()) {
        return addPayload(text->size());
    }
    if (const auto* data = list.as<PropertyList::Data>()) {
        return addPayload(data->size());
    }
    if (const auto* array = list.as<PropertyList::Array>()) {
        for (const PropertyList& element : *array) {
            if (const auto error = add(element, depth + 1)) {
                return error;
            }
        }
    }
    if (const auto* dictionary = list.as<PropertyList::Dictionary>()) {
        for (const auto& [key, element] : *dictionary) {
            auto error = addNodes(1);
            error = error ? error : addPayload(key.size());
            error = error ? error : add(element, depth + 1);
            if (error) {
                return error;
            }
        }
    }
    return std::nullopt;
}

}  // namespace velko
