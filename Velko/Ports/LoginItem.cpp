#include "Velko/Ports/LoginItem.h"

namespace velko {

std::string_view describe(LoginItem::Status status) noexcept {
    switch (status) {
        case LoginItem::Status::notRegistered: return "not registered";
        case LoginItem::Status::enabled: return "enabled";
        case LoginItem::Status::requiresApproval: return "requires approval";
        case LoginItem::Status::notFound: return "not found";
    }
    return "not found";
}

}  // namespace velko
