#include "VelkoCore/Import/PropertyListChecks.h"

#include <algorithm>
#include <string>
#include <vector>

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

namespace {

using Failure = std::optional<PropertyListError>;

constexpr std::string_view blanks = " \t\r\n";

bool isBlank(std::string_view text) noexcept {
    return text.find_first_not_of(blanks) == std::string_view::npos;
}

bool isLetter(char byte) noexcept {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

/// In another encoding, a library could see tags that this check does not see.
bool namesTrustedEncoding(std::string_view declaration) {
    std::string lowered{declaration};
    std::ranges::transform(lowered, lowered.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    const auto encoding = lowered.find("encoding");
    return encoding == std::string::npos || lowered.find("utf-8", encoding) != std::string::npos ||
           lowered.find("us-ascii", encoding) != std::string::npos;
}

/// Walks the markup from tag to tag.
class XmlCheck {
 public:
    explicit XmlCheck(std::string_view text) noexcept : rest_{text} {}

    Failure run() {
        if (rest_.find('\0') != std::string_view::npos) {
            return PropertyListError::malformed;
        }
        for (auto start = rest_.find('<'); start != std::string_view::npos; start = rest_.find('<')) {
            if (open_.empty() && !isBlank(rest_.substr(0, start))) {
                return PropertyListError::malformed;
            }
            rest_.remove_prefix(start);
            if (const Failure failure = takeMarkup()) {
                return failure;
            }
        }
        const bool isWhole = sawRoot_ && open_.empty() && isBlank(rest_);
        return isWhole ? std::nullopt : Failure{PropertyListError::malformed};
    }

 private:
    Failure takeMarkup() {
        if (rest_.starts_with("<!--")) {
            return takeThrough("-->", 4) ? std::nullopt : Failure{PropertyListError::malformed};
        }
        if (rest_.starts_with("<![CDATA[") && !open_.empty()) {
            return takeThrough("]]>", 9) ? std::nullopt : Failure{PropertyListError::malformed};
        }
        if (rest_.starts_with("<?")) {
            const auto instruction = takeThrough("?>", 2);
            return instruction && namesTrustedEncoding(*instruction) ? std::nullopt
                                                                     : Failure{PropertyListError::malformed};
        }
        if (rest_.starts_with("<!DOCTYPE") && !sawRoot_) {
            const auto doctype = takeThrough(">", 9);
            return doctype && doctype->find('[') == std::string_view::npos
                       ? std::nullopt
                       : Failure{PropertyListError::malformed};
        }
        const auto tag = takeThrough(">", 1);
        return tag ? takeTag(*tag) : Failure{PropertyListError::malformed};
    }

    /// What stands between the first `skip` characters and `end`, and moves behind `end`.
    std::optional<std::string_view> takeThrough(std::string_view end, std::size_t skip) {
        const auto found = rest_.find(end, skip);
        if (found == std::string_view::npos) {
            return std::nullopt;
        }
        const auto taken = rest_.substr(skip, found - skip);
        rest_.remove_prefix(found + end.size());
        return taken;
    }

    Failure takeTag(std::string_view tag) {
        const bool closes = tag.starts_with('/');
        tag.remove_prefix(closes ? 1 : 0);
        const bool isEmpty = !closes && tag.ends_with('/');
        tag.remove_suffix(isEmpty ? 1 : 0);
        const auto nameEnd = std::min(
            static_cast<std::size_t>(std::ranges::find_if_not(tag, isLetter) - tag.begin()), tag.size());
        const std::string_view name = tag.substr(0, nameEnd);
        const std::string_view afterName = tag.substr(nameEnd);
        // Only the root may have attributes, so that every reader finds the end of a tag where this check
        // finds it.
        const bool isRoot = !closes && open_.empty();
        const bool isPlain = isRoot ? afterName.find('<') == std::string_view::npos : isBlank(afterName);
        if (name.empty() || !isPlain) {
            return PropertyListError::malformed;
        }
        return closes ? closeTag(name) : openTag(name, isEmpty);
    }

    Failure closeTag(std::string_view name) {
        if (open_.empty() || open_.back() != name) {
            return PropertyListError::malformed;
        }
        open_.pop_back();
        return std::nullopt;
    }

    Failure openTag(std::string_view name, bool isEmpty) {
        if (open_.empty()) {
            if (name != "plist" || sawRoot_) {
                return PropertyListError::malformed;
            }
            sawRoot_ = true;
        } else {
            // The root is not a value, so the number of open elements is the depth of the new value.
            if (const Failure failure = PropertyListBudget::checkDepth(open_.size())) {
                return failure;
            }
            if (const Failure failure = budget_.addNodes(1)) {
                return failure;
            }
        }
        if (!isEmpty) {
            open_.push_back(name);
        }
        return std::nullopt;
    }

    std::string_view rest_;
    std::vector<std::string_view> open_;
    PropertyListBudget budget_;
    bool sawRoot_ = false;
};

}  // namespace

std::optional<PropertyListError> checkXmlPropertyList(std::string_view text) {
    return XmlCheck{text}.run();
}

}  // namespace velko
