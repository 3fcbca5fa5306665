#include "VelkoCore/Import/PropertyList.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>

#include "VelkoCore/Import/PropertyListChecks.h"

namespace velko {

namespace {

std::string_view asText(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The part that starts with the XML markup: no byte-order mark, no white space before it.
std::span<const std::byte> fromFirstMarkup(std::span<const std::byte> bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    const std::string_view text = asText(bytes);
    const std::size_t start = text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    return bytes.subspan(std::min(text.find_first_not_of(" \t\r\n", start), text.size()));
}

}  // namespace

std::expected<PropertyList, PropertyListError> readPropertyList(std::span<const std::byte> bytes,
                                                                const PropertyListReader& reader) {
    if (bytes.size() > PropertyListLimits::bytes) {
        return std::unexpected(PropertyListError::tooLarge);
    }
    const bool isBinary = asText(bytes).starts_with("bplist");
    if (!isBinary) {
        bytes = fromFirstMarkup(bytes);
    }
    if (const auto error = isBinary ? checkBinaryPropertyList(bytes) : checkXmlPropertyList(asText(bytes))) {
        return std::unexpected(*error);
    }
    auto list = reader.read(bytes);
    if (list) {
        if (const auto error = PropertyListBudget{}.add(*list, 1)) {
            return std::unexpected(*error);
        }
    }
    return list;
}

std::expected<PropertyList, PropertyListError> readPropertyList(const std::filesystem::path& path,
                                                                const PropertyListReader& reader) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return std::unexpected(PropertyListError::unreadable);
    }
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(path.c_str(), "rbe"), close);
    if (!file) {
        return std::unexpected(PropertyListError::unreadable);
    }
    // One byte more than allowed shows that a file is too large, whatever size the file system tells.
    std::vector<std::byte> bytes(PropertyListLimits::bytes + 1);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()) != 0) {
        return std::unexpected(PropertyListError::unreadable);
    }
    return readPropertyList(bytes, reader);
}

}  // namespace velko
