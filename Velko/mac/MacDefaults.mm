#import "Velko/mac/MacDefaults.h"

#import <Foundation/Foundation.h>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

bool MacDefaults::isOn(const std::string& key) const {
    return [[NSUserDefaults standardUserDefaults] boolForKey:native(key)];
}

void MacDefaults::setOn(const std::string& key, bool on) {
    [[NSUserDefaults standardUserDefaults] setBool:on forKey:native(key)];
}

}  // namespace velko
