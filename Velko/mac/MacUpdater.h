#pragma once

#import <Foundation/Foundation.h>

#include "Velko/Ports/Updater.h"

@protocol UpdaterController;

namespace velko {

/// The Sparkle framework, when the bundle has it among its own.
class MacUpdater final : public Updater {
 public:
    [[nodiscard]] std::optional<std::string> whyUnavailable() const override;
    [[nodiscard]] bool checkForUpdates() override;

 private:
    id<UpdaterController> controller_ = nil;  // made on first use
};

}  // namespace velko
