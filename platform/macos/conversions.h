#pragma once

#include "platform/macos/core_foundation.h"
#include "platform/platform_error.h"

#include <QString>
#include <QVariant>
#include <filesystem>
#include <optional>

#import <Foundation/Foundation.h>

/**
 * @file
 * Between the platform's objects and plain values; for the adapters only. Texts go by Qt's own
 * conversions, which keep every code unit and never answer nil.
 */
namespace zorvane::platform::macos
{

/** The text; nothing for nil and for any other kind of object. */
[[nodiscard]] std::optional<QString> textOf(id object);

/** A property-list value: text, truth, number, data, date, array or dictionary. Of anything else
 * and of nil, nothing (a null or an invalid variant). */
[[nodiscard]] QVariant variantOf(id object);
[[nodiscard]] QVariantMap mapOf(NSDictionary *dictionary);

/** A property-list value; what is none becomes the empty text. */
[[nodiscard]] id objectOf(const QVariant &value);
[[nodiscard]] NSDictionary<NSString *, id> *dictionaryOf(const QVariantMap &map);
[[nodiscard]] NSArray<NSString *> *arrayOf(const QStringList &texts);

/** Nothing for nil: only that is success. */
[[nodiscard]] std::optional<PlatformError> errorOf(NSError *error);

/** Nil for the empty path, which names no file. */
[[nodiscard]] NSURL *urlOf(const std::filesystem::path &path);
/** The path in the file system's own encoding; nothing if it is longer than any that can be opened.
 */
[[nodiscard]] std::optional<std::filesystem::path> pathOf(NSURL *url);

} // namespace zorvane::platform::macos
