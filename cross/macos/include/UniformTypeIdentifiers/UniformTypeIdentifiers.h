// What Velko calls of UniformTypeIdentifiers, declared for the cross build. A build on a Mac uses Apple's
// own.
#pragma once

#import <Foundation/Foundation.h>

@interface UTType : NSObject
+ (instancetype)exportedTypeWithIdentifier:(NSString*)identifier conformingToType:(UTType*)parent;
@end

#ifdef __cplusplus
extern "C" {
#endif

extern UTType* const UTTypeJSON;

#ifdef __cplusplus
}
#endif
