#pragma once

#include <QString>

/**
 * @file
 * Paths as texts, by the platform's rules, the same on every system. Pure functions but for the
 * current directory that a relative path is bound to; no file is looked at.
 */
namespace zorvane::records
{

/**
 * @p path made absolute, with its "." and ".." components resolved textually and its trailing
 * slashes dropped. Repeated slashes and a ".." at the root stay; symbolic links are not resolved.
 */
[[nodiscard]] QString standardizedPath(const QString &path);

/** True if @p path is @p folder or lies anywhere below it; both standardised. */
[[nodiscard]] bool liesAtOrBelow(const QString &path, const QString &folder);

/** The last component, trailing slashes ignored; "/" for the root. */
[[nodiscard]] QString lastPathComponent(const QString &path);

/**
 * The extension of the last component, without its dot. Empty where there is none: no dot, a dot in
 * front or at the end, or an extension that holds a blank or a bidirectional control character.
 */
[[nodiscard]] QString pathExtension(const QString &path);

/** The last component without its extension and that extension's dot. */
[[nodiscard]] QString lastPathComponentWithoutExtension(const QString &path);

} // namespace zorvane::records
