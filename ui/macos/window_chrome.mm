#include "ui/macos/window_chrome.h"

#include <QGuiApplication>

#import <AppKit/AppKit.h>

namespace zorvane::ui::macos
{

void hideTitleBar(QWindow &window)
{
    @autoreleasepool {
        // Under Qt's other platforms, offscreen for example, the number is no view.
        if (QGuiApplication::platformName() != QStringLiteral("cocoa"))
            return;
        // NOLINTNEXTLINE(performance-no-int-to-ptr): it is how Qt hands out the view.
        auto *const view = (__bridge NSView *)reinterpret_cast<void *>(window.winId());
        view.window.titlebarAppearsTransparent = YES;
        view.window.titleVisibility = NSWindowTitleHidden;
        view.window.styleMask |= NSWindowStyleMaskFullSizeContentView;
    }
}

} // namespace zorvane::ui::macos
