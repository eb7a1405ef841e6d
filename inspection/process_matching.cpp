#include "inspection/process_matching.h"

#include "app/records/paths.h"

#include <algorithm>

namespace zorvane::inspection
{

using records::BlockedApplication;
using records::CodeIdentity;

ApplicationMatcher::ApplicationMatcher(const BlockedApplication &application)
    : m_path(records::standardizedPath(application.path))
{
    const auto identities = records::allCodeIdentities(application);
    m_identities = QSet<CodeIdentity>(identities.cbegin(), identities.cend());
}

bool ApplicationMatcher::owns(const DiscoveredNetworkProcess &process) const
{
    if (m_identities.contains(ownIdentity(process)))
        return true;
    const auto source = sourceApplicationIdentity(process);
    if (source && m_identities.contains(*source))
        return true;
    return process.executablePath
        && records::liesAtOrBelow(records::standardizedPath(*process.executablePath), m_path);
}

bool processBelongs(const DiscoveredNetworkProcess &process, const BlockedApplication &application)
{
    return ApplicationMatcher(application).owns(process);
}

ProcessIndex::ProcessIndex(const QList<BlockedApplication> &applications)
{
    for (qsizetype i = 0; i < applications.size(); ++i) {
        for (const CodeIdentity &identity : records::allCodeIdentities(applications.at(i)))
            m_byIdentity[identity].append(i);
        m_byPath[records::standardizedPath(applications.at(i).path)].append(i);
    }
}

QList<qsizetype> ProcessIndex::owners(const DiscoveredNetworkProcess &process) const
{
    QList<qsizetype> result = m_byIdentity.value(ownIdentity(process));
    if (const auto source = sourceApplicationIdentity(process))
        result += m_byIdentity.value(*source);
    if (process.executablePath) {
        const QString path = records::standardizedPath(*process.executablePath);
        // The path itself and every folder above it, as far as the root's own name.
        for (qsizetype end = path.size(); end > 0; end = path.lastIndexOf(u'/', end - 1)) {
            const auto found = m_byPath.find(QStringView(path).first(end));
            if (found != m_byPath.cend())
                result += found->second;
        }
    }
    std::ranges::sort(result);
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

QList<QList<qsizetype>> processesOfEach(
    const QList<BlockedApplication> &applications, const QList<DiscoveredNetworkProcess> &processes)
{
    QList<QList<qsizetype>> result(applications.size());
    const ProcessIndex index(applications);
    for (qsizetype position = 0; position < processes.size(); ++position) {
        for (const qsizetype owner : index.owners(processes.at(position)))
            result[owner].append(position);
    }
    return result;
}

} // namespace zorvane::inspection
