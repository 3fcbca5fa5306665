#include <utility>

#include "VelkoEngine/Contracts/Contracts.h"

namespace velko::Contracts {

void expect(Checks& checks, std::string name, bool passed, std::string seen) {
    checks.push_back({.name = std::move(name), .passed = passed, .seen = std::move(seen)});
}

}  // namespace velko::Contracts
