#pragma once

#include <string>

namespace velko {

/// Why a file could not be understood, in words that name the key, such as
/// "reveal.hover: expected true or false, found a number".
struct DecodingError {
    std::string description;

    bool operator==(const DecodingError&) const = default;
};

}  // namespace velko
