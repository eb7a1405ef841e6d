#pragma once

#import <Foundation/Foundation.h>

/**
 * @file
 * What is younger than the oldest headers that this program is compiled with: the parts of
 * SMAppService that are called (macOS 13 and later). Nothing of it is linked: the class is asked
 * for by its name, and only what it answers to is called.
 */

@protocol ZorvaneLoginItemsSettings <NSObject>
+ (void)openSystemSettingsLoginItems;
@end

/** SMAppServiceStatus. */
typedef NS_ENUM(NSInteger, ZorvaneServiceStatus) {
    ZorvaneServiceStatusNotRegistered = 0,
    ZorvaneServiceStatusEnabled = 1,
    /** The user has to allow it, or has forbidden it. */
    ZorvaneServiceStatusRequiresApproval = 2,
    ZorvaneServiceStatusNotFound = 3,
};

/** A launch agent that the bundle brings. */
@protocol ZorvaneAgentService <NSObject>
@property (readonly) ZorvaneServiceStatus status;
- (BOOL)registerAndReturnError:(NSError **)error;
@end

@protocol ZorvaneAgentServices <NSObject>
/** @p name is that of a file in the bundle's Contents/Library/LaunchAgents. */
+ (id<ZorvaneAgentService>)agentServiceWithPlistName:(NSString *)name;
@end
