#pragma once

#include <optional>
#include <QString>
#include <QStringList>

namespace zorvane::records
{

/**
 * The identifiers that belong to this product and must never be blocked: the product's own, and the
 * running bundle's without a trailing ".FilterExtension".
 */
[[nodiscard]] QStringList ownIdentifiers(const std::optional<QString> &ownBundleIdentifier);

/** True if @p identifier equals a member of @p own or lies below one ("member."). Exact,
 * case-sensitive. */
[[nodiscard]] bool belongsTo(const QStringList &own, const QString &identifier);

/** True if @p identifier is one of this product, run from a bundle of the given identifier. */
[[nodiscard]] bool isOwnIdentifier(
    const QString &identifier, const std::optional<QString> &ownBundleIdentifier);

} // namespace zorvane::records
