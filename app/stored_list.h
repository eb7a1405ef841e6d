#pragma once

#include "app/records/blocked_application.h"
#include "platform/preferences.h"
#include "platform/scheduler.h"

#include <memory>
#include <optional>
#include <QList>

namespace zorvane::app
{

/** The blocked list in the preferences. */
class StoredList
{
public:
    /** Both outlive this. */
    StoredList(platform::Preferences &preferences, platform::Scheduler &scheduler);

    /** Saves a copy of the list on the persistence queue, in order of the calls. Main thread. */
    void save(const QList<records::BlockedApplication> &applications);

    /** The saved list; nothing if there is none or it cannot be read. Any thread; blocks on the
     * disk. */
    [[nodiscard]] static std::optional<QList<records::BlockedApplication>> load(
        const platform::Preferences &preferences);

private:
    platform::Preferences &m_preferences;
    std::unique_ptr<platform::SerialQueue> m_persistenceQueue;
};

} // namespace zorvane::app
