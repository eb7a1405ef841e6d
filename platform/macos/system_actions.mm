#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"
#include "platform/macos/newer_system.h"

#include <QCoreApplication>

#import <AppKit/AppKit.h>

namespace zorvane::platform::macos
{

namespace
{

void open(NSURL *url)
{
    if (url != nil)
        [NSWorkspace.sharedWorkspace openURL:url];
}

class WorkspaceActions final : public SystemActions
{
public:
    void openUrl(const QUrl &url) override
    {
        @autoreleasepool {
            open(url.toNSURL());
        }
    }

    void openFolder(const QString &path) override
    {
        @autoreleasepool {
            open([NSURL fileURLWithPath:path.toNSString() isDirectory:YES]);
        }
    }

    [[nodiscard]] QList<QString> downloadsFolders() const override
    {
        @autoreleasepool {
            QList<QString> folders;
            for (NSURL *url in [NSFileManager.defaultManager URLsForDirectory:NSDownloadsDirectory
                                                                    inDomains:NSUserDomainMask])
                folders.append(QString::fromNSString(url.path));
            return folders;
        }
    }

    void openSystemSettings() override
    {
        @autoreleasepool {
            const Class<ZorvaneLoginItemsSettings> service = NSClassFromString(@"SMAppService");
            if ([service respondsToSelector:@selector(openSystemSettingsLoginItems)])
                [service openSystemSettingsLoginItems];
        }
    }

    void terminate() override { QCoreApplication::quit(); }

    void comeToFront() override
    {
        @autoreleasepool {
            // The update agent has no application of its own to show: it has the program started.
            if (NSApp == nil)
                open(NSBundle.mainBundle.bundleURL);
            else
                [NSApp activateIgnoringOtherApps:YES];
        }
    }
};

class ScopedFileAccess final : public FileAccess
{
public:
    [[nodiscard]] bool begin(const QUrl &url) override
    {
        @autoreleasepool {
            return [url.toNSURL() startAccessingSecurityScopedResource];
        }
    }

    void end(const QUrl &url) override
    {
        @autoreleasepool {
            [url.toNSURL() stopAccessingSecurityScopedResource];
        }
    }
};

} // namespace

std::unique_ptr<SystemActions> makeSystemActions()
{
    return std::make_unique<WorkspaceActions>();
}

std::unique_ptr<FileAccess> makeFileAccess()
{
    return std::make_unique<ScopedFileAccess>();
}

} // namespace zorvane::platform::macos
