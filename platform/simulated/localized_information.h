#pragma once

#include "platform/simulated/bundle_layout.h"

#include <QStringList>
#include <QVariant>

namespace zorvane::platform::simulated
{

/**
 * The localised part of a bundle's information dictionary, from "InfoPlist.loctable" or
 * "InfoPlist.strings". The first table found stands: one beside the localised folders, then that of
 * the language that suits @p languages best, then that of the development region, then "Base".
 * Empty if there is none. Any thread.
 */
[[nodiscard]] QVariantMap readLocalizedInformation(
    const BundleLayout &layout, const QStringList &languages, const QString &developmentRegion);

} // namespace zorvane::platform::simulated
