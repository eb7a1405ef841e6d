#include "fuzz/target.h"
#include "inspection/discovered_processes.h"
#include "inspection/network_components.h"
#include "inspection/process_matching.h"

#include <algorithm>

using namespace zorvane;
using fuzz::require;

namespace
{

constexpr inspection::ReferenceSeconds now = 800'000'000;

records::BlockedApplication someApplication()
{
    records::BlockedApplication application;
    application.name = QStringLiteral("Tool");
    application.signingIdentifier = QStringLiteral("com.example.Tool");
    application.path = QStringLiteral("/Applications/Tool.app");
    return application;
}

QList<inspection::DiscoveredNetworkProcess> asWritten(
    QList<inspection::DiscoveredNetworkProcess> processes)
{
    constexpr auto furthest = inspection::furthestSeconds;
    for (auto &process : processes) {
        process.firstSeenAt = std::clamp(process.firstSeenAt, -furthest, furthest);
        process.lastSeenAt = std::clamp(process.lastSeenAt, -furthest, furthest);
    }
    return processes;
}

} // namespace

/** Reads the input as what the filter saw, and makes of it what a discovery pass makes of it. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView text(data, qsizetype(size));
    const auto decoded = inspection::decodedProcesses(text);
    if (decoded)
        require(inspection::decodedProcesses(inspection::encodedProcesses(*decoded))
            == asWritten(*decoded));
    const auto recent = inspection::recentProcesses(text, now);
    require(recent.holdAt(now));
    require(decoded || recent.processes.isEmpty());
    const QList applications{someApplication()};
    const auto owned = inspection::processesOfEach(applications, recent.processes);
    QList<inspection::DiscoveredNetworkProcess> own;
    for (const qsizetype position : owned.constFirst())
        own.append(recent.processes.at(position));
    static_cast<void>(inspection::networkComponents(applications.constFirst(), own));
    return 0;
}
