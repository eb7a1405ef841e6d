#pragma once

#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "fakes/fake_platform.h"

namespace zorvane::tests
{

inline const QString listKey = QStringLiteral("blockedApplications");

/** A system with a stored list, not yet loaded by any store. */
struct StoreFixture {
    FakePlatform system;

    StoreFixture() { QLocale::setDefault(QLocale(QLocale::English)); }

    void storeList(const QList<records::BlockedApplication> &applications)
    {
        system.preferences.values.insert(listKey, records::encodedApplications(applications));
    }

    [[nodiscard]] QList<records::BlockedApplication> storedList() const
    {
        const auto bytes = system.preferences.data(listKey);
        return bytes
            ? records::decodedApplications(*bytes).value_or(QList<records::BlockedApplication>())
            : QList<records::BlockedApplication>();
    }

    [[nodiscard]] std::unique_ptr<app::AppBlockStore> loadedStore()
    {
        auto store = std::make_unique<app::AppBlockStore>(system.ports);
        system.scheduler.settle();
        return store;
    }

    void drop(app::AppBlockStore &store, const QString &path)
    {
        store.addApplication(QUrl::fromLocalFile(path));
        system.scheduler.settle();
    }
};

inline QStringList names(const app::AppBlockStore &store)
{
    QStringList result;
    for (const records::BlockedApplication &application : store.applications())
        result.append(application.name);
    return result;
}

} // namespace zorvane::tests
