#pragma once

#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "app/sample_applications.h"
#include "fakes/fake_platform.h"
#include "sample_processes.h"

namespace zorvane::tests
{

inline const QString group = QStringLiteral("group.dev.kestrelworks.Zorvane");
inline const QString recordsKey = QStringLiteral("discoveredNetworkProcesses.v2");
inline const QString listKey = QStringLiteral("blockedApplications");

/** A store over a made-up system, and what the filter saw. */
struct DiscoveryFixture {
    FakePlatform system;
    std::unique_ptr<app::AppBlockStore> store;

    explicit DiscoveryFixture(const QList<records::BlockedApplication> &applications)
    {
        system.preferences.values.insert(listKey, records::encodedApplications(applications));
        system.preferences.values.insert(QStringLiteral("protectionRequested"), true);
    }

    void start(bool enabled = false)
    {
        system.filterManager.stored.enabled = enabled;
        store = std::make_unique<app::AppBlockStore>(system.ports);
        system.scheduler.settle();
        system.preferences.written.clear();
    }

    void observe(const QList<inspection::DiscoveredNetworkProcess> &processes)
    {
        observeBytes(inspection::encodedProcesses(processes));
    }

    void observeBytes(const QByteArray &bytes)
    {
        system.suites.domains[group].insert(recordsKey, bytes);
    }

    /** Makes the filter report that it is on. */
    void completeActivation()
    {
        system.systemExtensions.delegate()->requestDidFinish(platform::ActivationResult::Completed);
        system.scheduler.settle();
    }

    /** The background job that was added last goes first, and its answer comes back. */
    void runNewestJob()
    {
        system.scheduler.runBackgroundJob(system.scheduler.waitingBackgroundJobs() - 1);
        system.scheduler.runPosted();
    }

    void pass() { system.scheduler.advance(std::chrono::seconds(5)); }

    [[nodiscard]] int listSaves() const { return int(system.preferences.written.count(listKey)); }

    [[nodiscard]] QList<records::CodeIdentity> auxiliary() const
    {
        return store->applications().constFirst().auxiliaryCodeIdentities.value();
    }
};

inline records::BlockedApplication tool()
{
    return sampleApplication(QStringLiteral("Tool"), QStringLiteral("com.example.Tool"));
}

/** A process inside the tool's bundle, seen a moment ago. */
inline inspection::DiscoveredNetworkProcess helper(const QString &identifier,
    const std::optional<QString> &team = QStringLiteral("TEAM"), double secondsAgo = 60)
{
    const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
    auto process = sampleProcess(identifier, team, inspection::referenceSeconds(now) - secondsAgo);
    process.executablePath = tool().path + QStringLiteral("/Contents/MacOS/") + identifier;
    return process;
}

} // namespace zorvane::tests
