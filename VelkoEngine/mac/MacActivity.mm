#import "VelkoEngine/mac/MacActivity.h"

#import <Foundation/Foundation.h>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

Subscription MacActivity::begin(const std::string& reason) {
    NSProcessInfo* process = [NSProcessInfo processInfo];
    const id<NSObject> token =
        [process beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                   reason:native(reason)];
    return Subscription([process, token] { [process endActivity:token]; });
}

}  // namespace velko
