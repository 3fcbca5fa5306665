#import "Velko/mac/Surroundings.h"

#import <Foundation/Foundation.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

#include "Velko/App/Log.h"
#include "Velko/Commands/CommandClient.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/ManagedLayoutFile.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko::Surroundings {

namespace {

std::string infoText(NSBundle* bundle, NSString* key) {
    NSString* text = [bundle objectForInfoDictionaryKey:key];
    return portable(text);
}

}  // namespace

AppInfo appInfo() {
    NSBundle* bundle = [NSBundle mainBundle];
    AppInfo info;
    info.bundleID = portableIfAny(bundle.bundleIdentifier).value_or(info.bundleID);
    info.version = infoText(bundle, @"CFBundleShortVersionString");
    info.build = infoText(bundle, @"CFBundleVersion");
    info.channel = infoText(bundle, @"VelkoChannel");
    info.documentation = infoText(bundle, @"VelkoDocumentation");
    info.systemVersion = portable([NSProcessInfo processInfo].operatingSystemVersionString);
    info.bundlePath = portable(bundle.bundlePath);
    return info;
}

std::filesystem::path layoutFile() {
    NSURL* folder = [[NSFileManager defaultManager] URLsForDirectory:NSApplicationSupportDirectory
                                                           inDomains:NSUserDomainMask]
                        .firstObject;
    if (folder == nil) {
        NSLog(@"Velko stops: this user has no Application Support folder.");
        std::abort();
    }
    return LayoutStore::defaultURL(portable(folder.path));
}

std::filesystem::path managedLayoutFile() {
    return ManagedLayoutFile::defaultURL("/Library/Application Support");
}

std::filesystem::path commandSocket() {
    return layoutFile().parent_path() / commands::socketName;
}

FileCalls fileCalls() {
    FileCalls calls;
    // The usual fsync leaves data in the drive's cache. File systems that can do no better still have it.
    calls.fsync = [](int file) { return ::fcntl(file, F_FULLFSYNC) == 0 ? 0 : ::fsync(file); };
    return calls;
}

std::filesystem::path homeFolder() {
    return portable(NSHomeDirectory());
}

std::filesystem::path logFile() {
    return Log::defaultFile(homeFolder());
}

}  // namespace velko::Surroundings
