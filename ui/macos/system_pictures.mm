#include "ui/system_pictures.h"

#include "platform/macos/bitmap.h"

#import <AppKit/AppKit.h>

namespace zorvane::ui
{

namespace
{

/** A symbol's box is this many times the font size that it stands at. */
constexpr double boxOfFontSize = 1.36;

NSFontWeight weightOf(double stroke)
{
    if (stroke < 1.5)
        return NSFontWeightLight;
    if (stroke < 1.7)
        return NSFontWeightRegular;
    if (stroke < 2.0)
        return NSFontWeightMedium;
    return stroke < 2.4 ? NSFontWeightSemibold : NSFontWeightBold;
}

/** In the middle of the box, no larger than that. */
NSRect placed(NSSize picture, QSize box)
{
    const CGFloat widest = box.width() / picture.width;
    const CGFloat scale = MIN(MIN(widest, box.height() / picture.height), 1.0);
    const NSSize size = NSMakeSize(picture.width * scale, picture.height * scale);
    return NSMakeRect(
        (box.width() - size.width) / 2, (box.height() - size.height) / 2, size.width, size.height);
}

/** @p paint draws by AppKit. */
QImage painted(QSize size, const std::function<void()> &paint)
{
    return platform::macos::paintedBitmap(size, [&paint](CGContextRef context) {
        [NSGraphicsContext saveGraphicsState];
        NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context
                                                                                   flipped:NO];
        paint();
        [NSGraphicsContext restoreGraphicsState];
    });
}

NSImage *symbolAt(const QString &name, double stroke, double fontSize)
{
    NSImageSymbolConfiguration *const configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:fontSize weight:weightOf(stroke)];
    return [[NSImage imageWithSystemSymbolName:name.toNSString()
                      accessibilityDescription:nil] imageWithSymbolConfiguration:configuration];
}

} // namespace

QImage ownIconOfSystem(QSize size)
{
    @autoreleasepool {
        NSImage *const icon = NSApp.applicationIconImage;
        if (icon == nil)
            return {};
        return painted(
            size, [&] { [icon drawInRect:NSMakeRect(0, 0, size.width(), size.height())]; });
    }
}

QImage symbolOfSystem(const QString &name, const QColor &color, double stroke, QSize size)
{
    @autoreleasepool {
        NSImage *const symbol = symbolAt(name, stroke, size.height() / boxOfFontSize);
        if (symbol == nil)
            return {};
        NSColor *const ink = [NSColor colorWithSRGBRed:color.redF()
                                                 green:color.greenF()
                                                  blue:color.blueF()
                                                 alpha:color.alphaF()];
        return painted(size, [&] {
            [symbol drawInRect:placed(symbol.size, size)];
            [ink set];
            NSRectFillUsingOperation(
                NSMakeRect(0, 0, size.width(), size.height()), NSCompositingOperationSourceIn);
        });
    }
}

} // namespace zorvane::ui
