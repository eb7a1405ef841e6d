#pragma once

#include "inspection/discovered_processes.h"
#include "platform/simulated/main_bundle.h"
#include "platform/simulated/preferences.h"
#include "tools/system_settings/system_state.h"

#include <QObject>
#include <qqmlregistration.h>

namespace zorvane::tools
{

/**
 * A connection that the user makes up: what the filter extension would decide about it as the
 * configuration stands, and its record in the shared preferences. Main thread.
 */
class Traffic final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program's main")
    Q_PROPERTY(QString signingIdentifier MEMBER m_signingIdentifier NOTIFY changed)
    Q_PROPERTY(QString teamIdentifier MEMBER m_teamIdentifier NOTIFY changed)
    Q_PROPERTY(QString sourceIdentifier MEMBER m_sourceIdentifier NOTIFY changed)
    Q_PROPERTY(QString sourceTeamIdentifier MEMBER m_sourceTeamIdentifier NOTIFY changed)
    Q_PROPERTY(QString executablePath MEMBER m_executablePath NOTIFY changed)
    Q_PROPERTY(bool isBlocked READ isBlocked NOTIFY changed)
    Q_PROPERTY(QString verdict READ verdict NOTIFY changed)
    Q_PROPERTY(bool canConnect READ canConnect NOTIFY changed)
    Q_PROPERTY(bool hasListed READ hasListed NOTIFY changed)
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)

public:
    /** @p state outlives it. */
    explicit Traffic(const SystemState &state);

    [[nodiscard]] bool isBlocked() const;
    /** The decision about the connection as it is chosen now. */
    [[nodiscard]] QString verdict() const;
    /** False without a signing identifier, which every code has. */
    [[nodiscard]] bool canConnect() const { return !m_signingIdentifier.isEmpty(); }
    /** True if the configuration lists anything to choose. */
    [[nodiscard]] bool hasListed() const;
    /** What came of the last connection. */
    [[nodiscard]] QString note() const { return m_note; }

    /** Chooses the next of the identities and applications that the configuration lists. */
    Q_INVOKABLE void chooseNext();
    /** Records one connection of what is chosen, as the extension would. */
    Q_INVOKABLE void openConnection();

Q_SIGNALS:
    void changed();
    void noteChanged();

private:
    [[nodiscard]] inspection::DiscoveredNetworkProcess process() const;
    [[nodiscard]] QString store(const inspection::DiscoveredNetworkProcess &process);

    const SystemState &m_state;
    platform::simulated::SimulatedEntitlements m_entitlements;
    platform::simulated::FilePreferencesSuites m_suites;
    QString m_signingIdentifier;
    QString m_teamIdentifier;
    QString m_sourceIdentifier;
    QString m_sourceTeamIdentifier;
    QString m_executablePath;
    QString m_note;
    qsizetype m_nextListed = 0;
};

} // namespace zorvane::tools
