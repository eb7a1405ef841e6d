#pragma once

#include "app/records/blocked_application.h"
#include "inspection/discovered_network_process.h"

#include <optional>
#include <QList>
#include <QString>

namespace zorvane::inspection
{

/** One line of what an application's row unfolds to. A plain value. */
struct ApplicationNetworkComponent {
    enum class Kind { Main, Bundled, Observed };

    /** Stable within one row. */
    QString id;
    QString name;
    QString signingIdentifier;
    std::optional<QString> teamIdentifier;
    /** For observed processes. */
    std::optional<QString> executablePath;
    Kind kind = Kind::Main;
    /** For observed processes. */
    std::optional<ReferenceSeconds> lastSeenAt;

    friend bool operator==(const ApplicationNetworkComponent &, const ApplicationNetworkComponent &)
        = default;
};

[[nodiscard]] size_t qHash(const ApplicationNetworkComponent &component, size_t seed = 0) noexcept;

/** The label that the user is shown for @p kind. */
[[nodiscard]] QString label(ApplicationNetworkComponent::Kind kind);

/** The kind that has the label @p text; nothing for any other text. */
[[nodiscard]] std::optional<ApplicationNetworkComponent::Kind> kindFromLabel(const QString &text);

/**
 * What @p application runs as: the observed @p processes that belong to it, and its inspected
 * identities that were not observed. The main items first, each group by name. A pure function.
 */
[[nodiscard]] QList<ApplicationNetworkComponent> networkComponents(
    const records::BlockedApplication &application,
    const QList<DiscoveredNetworkProcess> &processes);

} // namespace zorvane::inspection
