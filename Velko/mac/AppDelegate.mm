#import "Velko/mac/AppDelegate.h"

#include <memory>

#include "Velko/AppController.h"
#include "Velko/Log.h"
#include "Velko/mac/MacDialogs.h"
#include "Velko/mac/MacLoginItem.h"
#include "Velko/mac/Surroundings.h"
#include "VelkoEngine/AssessmentEngine.h"
#include "VelkoEngine/mac/MacPlatform.h"

namespace {

/// Everything that lives as long as the program, in the order in which it depends on what came before.
struct Program {
    velko::MacPlatform platform;
    velko::MacDialogs dialogs;
    velko::MacLoginItem loginItem;
    velko::Log log{platform.ports().mainThread, velko::Surroundings::logFile()};
    velko::AppController controller{
        {.platform = platform.ports(),
         .ports = {.dialogs = dialogs, .loginItem = loginItem},
         .log = log,
         .store = velko::LayoutStore(velko::Surroundings::layoutFile(), velko::Surroundings::fileCalls()),
         .engine = std::make_unique<velko::AssessmentEngine>(platform.ports()),
         .info = velko::Surroundings::appInfo()},
    };
};

}  // namespace

@implementation AppDelegate {
    std::unique_ptr<Program> _program;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    _program = std::make_unique<Program>();
    _program->controller.start();
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    if (_program) {
        // The program itself stays for as long as the process: reads and activations that are under way on
        // other threads still come to its platform.
        _program->controller.quit();
    }
}

@end
