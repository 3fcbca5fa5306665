// What Velko calls of Foundation, declared for the cross build. A build on a Mac uses Apple's own.
#pragma once

#import <CoreFoundation/CoreFoundation.h>
#import <objc/NSObject.h>

@class NSArray<ObjectType>, NSData, NSDictionary<KeyType, ObjectType>, NSError, NSURL;

typedef CGPoint NSPoint;
typedef CGRect NSRect;
typedef CGSize NSSize;
typedef uint16_t unichar;
typedef double NSTimeInterval;
typedef NSString* NSExceptionName;
typedef NSString* NSErrorDomain;
typedef NSString* NSRunLoopMode;
typedef NSString* NSNotificationName;

typedef struct NSEdgeInsets {
    CGFloat top;
    CGFloat left;
    CGFloat bottom;
    CGFloat right;
} NSEdgeInsets;

typedef struct {
    unsigned long state;
    id __unsafe_unretained* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)count;
@end

@protocol NSCopying
@end

typedef enum NSKeyValueObservingOptions : NSUInteger {} NSKeyValueObservingOptions;

@interface NSObject (NSKeyValueObserving)
- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context;
@end

@interface NSObject (NSKeyValueObserverRegistration)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context;
@end

@interface NSString : NSObject <NSCopying>
+ (instancetype)stringWithCharacters:(const unichar*)characters length:(NSUInteger)length;
@property(readonly) NSUInteger length;
- (unichar)characterAtIndex:(NSUInteger)index;
- (BOOL)isEqualToString:(NSString*)other;
- (NSString*)stringByAppendingPathComponent:(NSString*)component;
@end

@interface NSObject (NSKeyValueCoding)
- (void)setValue:(id)value forKey:(NSString*)key;
@end

@interface NSNumber : NSObject
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInt:(int)value;
@end

@interface NSArray<ObjectType> : NSObject <NSFastEnumeration>
@property(readonly) NSUInteger count;
@property(readonly) ObjectType firstObject;
- (BOOL)containsObject:(ObjectType)object;
- (NSArray<ObjectType>*)sortedArrayUsingSelector:(SEL)comparator;
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)index;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
+ (instancetype)arrayWithCapacity:(NSUInteger)capacity;
- (void)addObject:(ObjectType)object;
@end

@interface NSDictionary<KeyType, ObjectType> : NSObject <NSFastEnumeration>
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObjects:(const ObjectType[])objects
                              forKeys:(const KeyType<NSCopying>[])keys
                                count:(NSUInteger)count;
- (ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSIndexSet : NSObject
- (BOOL)containsIndex:(NSUInteger)index;
- (BOOL)isEqualToIndexSet:(NSIndexSet*)other;
@end

@interface NSMutableIndexSet : NSIndexSet
+ (instancetype)indexSet;
- (void)addIndex:(NSUInteger)index;
@end

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
@property(readonly) const void* bytes;
@property(readonly) NSUInteger length;
- (BOOL)writeToFile:(NSString*)path atomically:(BOOL)useAuxiliaryFile;
@end

@interface NSDate : NSObject
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)secs;
@property(readonly) NSTimeInterval timeIntervalSince1970;
@end

@interface NSURL : NSObject
+ (instancetype)URLWithString:(NSString*)address;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@property(readonly, copy) NSString* absoluteString;
@property(readonly, copy) NSString* path;
@property(readonly, getter=isFileURL) BOOL fileURL;
@end

@interface NSError : NSObject
@property(readonly, copy) NSErrorDomain domain;
@property(readonly) NSInteger code;
@property(readonly, copy) NSString* localizedDescription;
@end

@interface NSException : NSObject
@property(readonly, copy) NSExceptionName name;
@property(readonly, copy) NSString* reason;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSString* bundlePath;
@property(readonly, copy) NSString* executablePath;
@property(readonly, copy) NSString* privateFrameworksPath;
+ (instancetype)bundleWithPath:(NSString*)path;
- (BOOL)load;
- (id)objectForInfoDictionaryKey:(NSString*)key;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (BOOL)boolForKey:(NSString*)key;
- (void)setBool:(BOOL)value forKey:(NSString*)key;
- (NSString*)stringForKey:(NSString*)key;
- (void)setObject:(id)value forKey:(NSString*)key;
@end

typedef uint64_t NSActivityOptions;
enum : NSActivityOptions { NSActivityUserInitiatedAllowingIdleSystemSleep = 0x00EFFFFF };

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly, copy) NSString* operatingSystemVersionString;
@property(readonly) NSTimeInterval systemUptime;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
- (void)endActivity:(id<NSObject>)activity;
@end

typedef enum NSSearchPathDirectory : NSUInteger { NSApplicationSupportDirectory = 14 } NSSearchPathDirectory;
typedef enum NSSearchPathDomainMask : NSUInteger { NSUserDomainMask = 1 } NSSearchPathDomainMask;

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory
                           inDomains:(NSSearchPathDomainMask)domains;
- (NSString*)displayNameAtPath:(NSString*)path;
- (BOOL)copyItemAtURL:(NSURL*)from toURL:(NSURL*)to error:(NSError**)error;
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resulting error:(NSError**)error;
@end

@interface NSUndoManager : NSObject
@property(readonly) BOOL canUndo;
@property(readonly) BOOL canRedo;
- (void)undo;
- (void)redo;
@end

@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue;
@end

@interface NSNotification : NSObject
@property(readonly, copy) NSDictionary* userInfo;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification*))block;
- (void)removeObserver:(id)observer;
@end

@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter*)defaultCenter;
@end

typedef enum NSPropertyListMutabilityOptions : NSUInteger {
    NSPropertyListImmutable = 0
} NSPropertyListMutabilityOptions;
typedef NSPropertyListMutabilityOptions NSPropertyListReadOptions;
typedef enum NSPropertyListFormat : NSUInteger {} NSPropertyListFormat;

@interface NSPropertyListSerialization : NSObject
+ (id)propertyListWithData:(NSData*)data
                   options:(NSPropertyListReadOptions)options
                    format:(NSPropertyListFormat*)format
                     error:(NSError**)error;
@end

#ifdef __cplusplus
extern "C" {
#endif

extern NSRunLoopMode const NSDefaultRunLoopMode;

Class NSClassFromString(NSString* name);
NSString* NSHomeDirectory(void);
void NSLog(NSString* format, ...);

#ifdef __cplusplus
}
#endif
