#include "app/stored_list.h"

#include "app/records/blocked_application_json.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::app
{

namespace
{

const QString defaultsKey = u"blockedApplications"_s;

} // namespace

StoredList::StoredList(
    platform::Preferences &preferences, platform::Scheduler &scheduler, SetAsideLists setAsideLists)
    : m_preferences(preferences)
    , m_scheduler(scheduler)
    , m_setAsideLists(std::move(setAsideLists))
    , m_persistenceQueue(scheduler.makeSerialQueue("dev.kestrelworks.Zorvane.persistence"))
{
}

void StoredList::setAsideBeforeSave(const QByteArray &unreadable)
{
    m_unreadable = unreadable;
}

void StoredList::save(const QList<records::BlockedApplication> &applications)
{
    const QByteArray unreadable = std::exchange(m_unreadable, {});
    if (!unreadable.isEmpty()) {
        m_persistenceQueue->add(
            [this, unreadable] { m_setAsideLists.keep(unreadable, m_scheduler.now()); });
    }
    m_persistenceQueue->add([&preferences = m_preferences, applications] {
        preferences.setData(defaultsKey, records::encodedApplications(applications));
    });
}

StoredList::Loaded StoredList::load(const platform::Preferences &preferences)
{
    const QByteArray bytes = preferences.data(defaultsKey).value_or(QByteArray());
    if (const auto applications = records::decodedApplications(bytes))
        return {*applications, {}};
    return {{}, bytes};
}

} // namespace zorvane::app
