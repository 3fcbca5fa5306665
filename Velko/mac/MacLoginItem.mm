#import "Velko/mac/MacLoginItem.h"

#import <ServiceManagement/ServiceManagement.h>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

LoginItem::Status MacLoginItem::status() const {
    switch ([SMAppService mainAppService].status) {
        case SMAppServiceStatusNotRegistered:
            return Status::notRegistered;
        case SMAppServiceStatusEnabled:
            return Status::enabled;
        case SMAppServiceStatusRequiresApproval:
            return Status::requiresApproval;
        case SMAppServiceStatusNotFound:
            return Status::notFound;
    }
    return Status::notFound;
}

std::expected<void, std::string> MacLoginItem::setEnabled(bool enabled) {
    SMAppService* service = [SMAppService mainAppService];
    NSError* error = nil;
    const BOOL done =
        enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
    if (!done) {
        return std::unexpected(portable(error.localizedDescription));
    }
    return {};
}

}  // namespace velko
