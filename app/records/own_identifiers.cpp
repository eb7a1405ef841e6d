#include "app/records/own_identifiers.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace zorvane::records
{

QStringList ownIdentifiers(const std::optional<QString> &ownBundleIdentifier)
{
    QStringList own{u"dev.kestrelworks.Zorvane"_s};
    if (!ownBundleIdentifier || ownBundleIdentifier->isEmpty())
        return own;
    QString bundleIdentifier = *ownBundleIdentifier;
    const auto extensionSuffix = ".FilterExtension"_L1;
    if (bundleIdentifier.endsWith(extensionSuffix))
        bundleIdentifier.chop(extensionSuffix.size());
    if (!own.contains(bundleIdentifier))
        own.append(bundleIdentifier);
    return own;
}

bool belongsTo(const QStringList &own, const QString &identifier)
{
    return std::ranges::any_of(own, [&](const QString &member) {
        return identifier.startsWith(member)
            && (identifier.size() == member.size() || identifier.at(member.size()) == u'.');
    });
}

bool isOwnIdentifier(const QString &identifier, const std::optional<QString> &ownBundleIdentifier)
{
    return belongsTo(ownIdentifiers(ownBundleIdentifier), identifier);
}

} // namespace zorvane::records
