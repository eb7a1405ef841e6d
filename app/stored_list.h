#pragma once

#include "app/records/blocked_application.h"
#include "app/set_aside_lists.h"
#include "platform/preferences.h"
#include "platform/scheduler.h"

#include <memory>
#include <QByteArray>
#include <QList>

namespace zorvane::app
{

/** The blocked list in the preferences. */
class StoredList
{
public:
    /** What was found under the key. */
    struct Loaded {
        /** Empty if there is no list or it cannot be read. */
        QList<records::BlockedApplication> applications;
        /** What is stored but cannot be read; empty otherwise. */
        QByteArray unreadable;
    };

    /** The services outlive this. */
    StoredList(platform::Preferences &preferences, platform::Scheduler &scheduler,
        SetAsideLists setAsideLists);

    /** The next save, which overwrites @p unreadable, sets it aside first. Main thread. */
    void setAsideBeforeSave(const QByteArray &unreadable);

    /** Saves a copy of the list on the persistence queue, in order of the calls. Main thread. */
    void save(const QList<records::BlockedApplication> &applications);

    /** Any thread; blocks on the disk. */
    [[nodiscard]] static Loaded load(const platform::Preferences &preferences);

private:
    platform::Preferences &m_preferences;
    platform::Scheduler &m_scheduler;
    const SetAsideLists m_setAsideLists;
    QByteArray m_unreadable;
    std::unique_ptr<platform::SerialQueue> m_persistenceQueue;
};

} // namespace zorvane::app
