#include "tools/system_settings/traffic.h"

#include "tools/system_settings/filter_extension.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace zorvane::tools
{

using inspection::DiscoveredNetworkProcess;
using platform::simulated::FilterConfiguration;

namespace
{

QStringList listedKeys(const FilterConfiguration &filter)
{
    return filter.vendorList(u"blockedCodeIdentities"_s);
}

QStringList listedPaths(const FilterConfiguration &filter)
{
    return filter.vendorList(u"blockedApplicationPaths"_s);
}

std::optional<QString> present(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace

Traffic::Traffic(const SystemState &state)
    : m_state(state)
    , m_entitlements(state.system())
    , m_suites(state.system())
{
    connect(&state, &SystemState::changed, this, &Traffic::changed);
}

bool Traffic::isBlocked() const
{
    return canConnect() && tools::verdict(m_state.filter(), process()).blocked;
}

QString Traffic::verdict() const
{
    return canConnect() ? tools::verdict(m_state.filter(), process()).reason : QString();
}

bool Traffic::hasListed() const
{
    return !listedKeys(m_state.filter()).isEmpty() || !listedPaths(m_state.filter()).isEmpty();
}

void Traffic::chooseNext()
{
    const QStringList keys = listedKeys(m_state.filter());
    const QStringList paths = listedPaths(m_state.filter());
    if (keys.isEmpty() && paths.isEmpty())
        return;
    const qsizetype chosen = m_nextListed % (keys.size() + paths.size());
    m_nextListed = chosen + 1;
    m_sourceIdentifier.clear();
    m_sourceTeamIdentifier.clear();
    if (chosen < keys.size()) {
        const auto identity
            = records::identityFromKey(keys[chosen]).value_or(records::CodeIdentity());
        m_signingIdentifier = identity.signingIdentifier;
        m_teamIdentifier = identity.teamIdentifier.value_or(QString());
        m_executablePath.clear();
    } else {
        // What is known of it is where it lies.
        m_signingIdentifier = u"com.example.unlisted"_s;
        m_teamIdentifier.clear();
        m_executablePath = paths[chosen - keys.size()] + u"/Contents/MacOS/unlisted"_s;
    }
    Q_EMIT changed();
}

void Traffic::openConnection()
{
    if (!canConnect())
        return;
    m_note = store(process());
    Q_EMIT noteChanged();
}

DiscoveredNetworkProcess Traffic::process() const
{
    DiscoveredNetworkProcess process;
    process.signingIdentifier = m_signingIdentifier;
    process.teamIdentifier = present(m_teamIdentifier);
    process.sourceApplicationIdentifier = present(m_sourceIdentifier);
    if (process.sourceApplicationIdentifier)
        process.sourceApplicationTeamIdentifier = present(m_sourceTeamIdentifier);
    process.executablePath = present(m_executablePath);
    process.firstSeenAt = process.lastSeenAt
        = inspection::referenceSeconds(QDateTime::currentDateTimeUtc());
    process.connectionCount = 1;
    return process;
}

/** Says what came of it. */
QString Traffic::store(const DiscoveredNetworkProcess &process)
{
    const inspection::DiscoveredProcesses reader({m_entitlements, m_suites});
    const auto group = reader.resolveApplicationGroup();
    const auto suite = group ? m_suites.open(*group) : nullptr;
    if (!suite)
        return u"This system’s system.json names no application group to record it for."_s;
    suite->synchronize();
    const QString key = inspection::discoveredProcessesKey;
    // Records that cannot be read are of no use to anybody: the list begins anew.
    const auto records
        = withConnection(inspection::decodedProcesses(suite->data(key).value_or(QByteArray()))
                             .value_or(QList<DiscoveredNetworkProcess>()),
            process);
    suite->setData(key, inspection::encodedProcesses(records));
    suite->synchronize();
    return u"Recorded for Zorvane, which reads it within five seconds."_s;
}

} // namespace zorvane::tools
