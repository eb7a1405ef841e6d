#pragma once

#include "app/store_fixture.h"
#include "model/list_changes.h"
#include "model/model.h"

#include <functional>
#include <memory>

namespace zorvane::tests
{

/** One run of the program in its model: its store, and an eye on all that is to be seen of it. */
class WatchedStore
{
public:
    /** Where it runs; outlives it. */
    struct World {
        StoreFixture &fixture;
        ObservedProcesses &observed;
        Counts &happened;
    };

    /** The program starts. */
    explicit WatchedStore(const World &world);

    [[nodiscard]] app::AppBlockStore &store() { return *m_store; }
    /** Called when the list is another, with the name of what happened to it. */
    std::function<void(const QString &event)> whenChanged;

    // What the user does.
    void drop(const QString &path);
    void remove(const records::BlockedApplication &application);
    void reinspect();
    void switchProtection(bool on);
    void explain();
    void dismissAlert();

    /** An inspection looks at the bundle at @p path, and has to make this of it. */
    void inspected(const QString &path, const Inspected &result)
    {
        m_changes.inspected(path, result);
    }

    /** Which invariant does not hold after a step; empty if all do. */
    [[nodiscard]] QString broken();
    /** The same at rest, and what should have happened by now. */
    [[nodiscard]] QString brokenAtRest();
    /** The program ends in good order, or in the midst of what it does; then nothing else can be
     * called. Returns what is wrong with what it leaves stored. */
    [[nodiscard]] QString end();
    [[nodiscard]] QString kill();

private:
    void listChanged();
    void alertChanged();
    void statusChanged();
    void wishWritten();
    [[nodiscard]] QString brokenSystem() const;
    [[nodiscard]] QString brokenList() const;
    [[nodiscard]] QString brokenAddition();
    [[nodiscard]] QString owed() const;
    [[nodiscard]] QString brokenStorage();
    [[nodiscard]] bool isWishKnown() const;

    World m_world;
    FakePlatform &m_system;
    QByteArray m_atStart;
    /** Since the one that is stored; each has to be stored in its turn. */
    QList<Applications> m_lists;
    ListChanges m_changes;
    std::unique_ptr<app::AppBlockStore> m_store;
    std::optional<QString> m_alert;
    bool m_isAlertAsked = false;
    bool m_wasWishKnown = false;
    bool m_hasAdded = false;
    QString m_broken;
};

} // namespace zorvane::tests
