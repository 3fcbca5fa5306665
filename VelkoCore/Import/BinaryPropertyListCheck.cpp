#include <algorithm>
#include <cstdint>
#include <expected>
#include <string_view>
#include <vector>

#include "VelkoCore/Import/PropertyListChecks.h"

namespace velko {

namespace {

constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;

/// The high half of an object's first byte.
enum class Marker : std::uint8_t {
    constant = 0x0,
    integer = 0x1,
    real = 0x2,
    date = 0x3,
    data = 0x4,
    ascii = 0x5,
    utf16 = 0x6,
    uid = 0x8,
    array = 0xA,
    dictionary = 0xD,
};

struct Object {
    Marker kind = Marker::constant;
    std::uint64_t count = 0;  ///< the low half of the first byte, or the number that stands after it
    std::size_t body = 0;     ///< where the content starts
};

/// How large a value is when everything in it is written out.
struct Extent {
    std::size_t nodes = 0;  ///< 0: not known yet
    std::size_t payload = 0;
    std::size_t height = 0;
    bool isKey = false;  ///< a text without NUL characters
};

using Measured = std::expected<Extent, PropertyListError>;

constexpr std::unexpected malformed{PropertyListError::malformed};

class BinaryCheck {
 public:
    explicit BinaryCheck(std::span<const std::byte> bytes) noexcept : bytes_{bytes} {}

    std::optional<PropertyListError> run() {
        if (const auto error = readTrailer()) {
            return error;
        }
        const Measured whole = measure(top_, 1);
        return whole ? std::nullopt : std::optional{whole.error()};
    }

 private:
    [[nodiscard]] std::uint64_t number(std::size_t offset, std::size_t width) const {
        std::uint64_t value = 0;
        for (const std::byte byte : bytes_.subspan(offset, width)) {
            value = value << 8U | std::to_integer<std::uint64_t>(byte);
        }
        return value;
    }

    std::optional<PropertyListError> readTrailer() {
        constexpr std::string_view signature = "bplist00";
        const bool isSigned = bytes_.size() >= headerSize + trailerSize &&
                              std::ranges::equal(bytes_.first(headerSize), signature, {}, {},
                                                 [](char letter) { return static_cast<std::byte>(letter); });
        if (!isSigned) {
            return PropertyListError::malformed;
        }
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetWidth_ = number(trailer + 6, 1);
        referenceWidth_ = number(trailer + 7, 1);
        const std::uint64_t count = number(trailer + 8, 8);
        top_ = number(trailer + 16, 8);
        const std::uint64_t table = number(trailer + 24, 8);
        const bool hasWidths =
            offsetWidth_ >= 1 && offsetWidth_ <= 8 && referenceWidth_ >= 1 && referenceWidth_ <= 8;
        if (!hasWidths || table < headerSize || table > trailer || count > (trailer - table) / offsetWidth_) {
            return PropertyListError::malformed;
        }
        if (count > PropertyListLimits::nodes) {
            return PropertyListError::tooManyNodes;
        }
        table_ = table;
        extents_.resize(count);
        isOpen_.resize(count);
        return std::nullopt;
    }

    /// Whether `count` pieces of `size` bytes fit between `start` and the offset table.
    [[nodiscard]] bool fits(std::size_t start, std::uint64_t count, std::size_t size) const noexcept {
        return start <= table_ && count <= (table_ - start) / size;
    }

    [[nodiscard]] std::expected<Object, PropertyListError> objectAt(std::uint64_t index) const {
        const std::uint64_t offset = number(table_ + index * offsetWidth_, offsetWidth_);
        if (offset < headerSize || offset >= table_) {
            return malformed;
        }
        const std::uint64_t marker = number(offset, 1);
        Object object{.kind = static_cast<Marker>(marker >> 4U), .count = marker & 0xFU, .body = offset + 1};
        const bool hasLength = object.kind == Marker::data || object.kind == Marker::ascii ||
                               object.kind == Marker::utf16 || object.kind == Marker::array ||
                               object.kind == Marker::dictionary;
        if (!hasLength || object.count != 0xF) {
            return object;
        }
        if (!fits(object.body, 1, 1)) {
            return malformed;
        }
        const std::uint64_t lengthMarker = number(object.body, 1);
        const std::size_t width = std::size_t{1} << (lengthMarker & 0x3U);
        if ((lengthMarker & 0xFCU) != 0x10 || !fits(object.body + 1, 1, width)) {
            return malformed;
        }
        object.count = number(object.body + 1, width);
        object.body += 1 + width;
        return object;
    }

    Measured measure(std::uint64_t index, std::size_t depth) {
        if (index >= extents_.size() || isOpen_[index]) {
            return malformed;
        }
        if (extents_[index].nodes == 0) {
            if (const auto error = PropertyListBudget::checkDepth(depth)) {
                return std::unexpected(*error);
            }
            const auto object = objectAt(index);
            if (!object) {
                return std::unexpected(object.error());
            }
            isOpen_[index] = true;
            const Measured extent = measureObject(*object, depth);
            isOpen_[index] = false;
            if (!extent) {
                return extent;
            }
            extents_[index] = *extent;
        }
        if (const auto error = PropertyListBudget::checkDepth(depth + extents_[index].height - 1)) {
            return std::unexpected(*error);
        }
        return extents_[index];
    }

    Measured measureObject(const Object& object, std::size_t depth) {
        const std::uint64_t low = object.count;
        switch (object.kind) {
            case Marker::constant:
                return low == 0x0 || low == 0x8 || low == 0x9 ? leaf(object, 0) : malformed;
            case Marker::integer: return low <= 4 ? leaf(object, 1U << low) : malformed;
            case Marker::real: return low == 2 || low == 3 ? leaf(object, 1U << low) : malformed;
            case Marker::date: return low == 3 ? leaf(object, 8) : malformed;
            case Marker::uid:
                return low == 0 || low == 1 || low == 3 || low == 7 ? leaf(object, low + 1) : malformed;
            case Marker::data: return leaf(object, object.count, object.count);
            case Marker::ascii: return text(object, 1, 1);
            // A unit of two bytes takes up to three as UTF-8.
            case Marker::utf16: return text(object, 2, 3);
            case Marker::array: return container(object, depth, false);
            case Marker::dictionary: return container(object, depth, true);
        }
        return malformed;
    }

    [[nodiscard]] Measured leaf(const Object& object, std::uint64_t bytes, std::size_t payload = 0) const {
        return fits(object.body, bytes, 1)
                   ? Measured{Extent{.nodes = 1, .payload = payload, .height = 1, .isKey = false}}
                   : malformed;
    }

    [[nodiscard]] Measured text(const Object& object, std::size_t size, std::size_t sizeWhenRead) const {
        if (!fits(object.body, object.count, size)) {
            return malformed;
        }
        return Extent{
            .nodes = 1, .payload = object.count * sizeWhenRead, .height = 1, .isKey = !hasNul(object, size)};
    }

    /// A dictionary lists all its keys and then all its values.
    Measured container(const Object& object, std::size_t depth, bool isDictionary) {
        const std::size_t perElement = isDictionary ? 2 : 1;
        if (!fits(object.body, object.count, perElement * referenceWidth_)) {
            return malformed;
        }
        const std::size_t references = object.count * perElement;
        // Objects may overlap, so the number of objects does not limit the number of references.
        if (const auto error = references_.addNodes(references)) {
            return std::unexpected(*error);
        }
        Extent whole{.nodes = 1, .payload = 0, .height = 1, .isKey = false};
        for (std::size_t place = 0; place < references; ++place) {
            const std::uint64_t index = number(object.body + place * referenceWidth_, referenceWidth_);
            const Measured element = measure(index, depth + 1);
            if (!element) {
                return element;
            }
            if (isDictionary && place < object.count && !element->isKey) {
                return malformed;
            }
            whole.nodes += element->nodes;
            whole.payload += element->payload;
            whole.height = std::max(whole.height, element->height + 1);
            if (whole.nodes > PropertyListLimits::nodes) {
                return std::unexpected(PropertyListError::tooManyNodes);
            }
            if (whole.payload > PropertyListLimits::payload) {
                return std::unexpected(PropertyListError::tooLarge);
            }
        }
        return whole;
    }

    /// Libraries hand keys out as C strings.
    [[nodiscard]] bool hasNul(const Object& object, std::size_t size) const {
        for (std::size_t place = 0; place < object.count; ++place) {
            if (number(object.body + place * size, size) == 0) {
                return true;
            }
        }
        return false;
    }

    std::span<const std::byte> bytes_;
    std::size_t offsetWidth_ = 0;
    std::size_t referenceWidth_ = 0;
    std::uint64_t top_ = 0;
    std::size_t table_ = 0;
    std::vector<Extent> extents_;
    std::vector<bool> isOpen_;  ///< objects whose content is being measured
    PropertyListBudget references_;
};

}  // namespace

std::optional<PropertyListError> checkBinaryPropertyList(std::span<const std::byte> bytes) {
    return BinaryCheck{bytes}.run();
}

}  // namespace velko
