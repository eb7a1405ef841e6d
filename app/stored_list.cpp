#include "app/stored_list.h"

#include "app/records/blocked_application_json.h"

using namespace Qt::StringLiterals;

namespace zorvane::app
{

namespace
{

const QString defaultsKey = u"blockedApplications"_s;

} // namespace

StoredList::StoredList(platform::Preferences &preferences, platform::Scheduler &scheduler)
    : m_preferences(preferences)
    , m_persistenceQueue(scheduler.makeSerialQueue("dev.kestrelworks.Zorvane.persistence"))
{
}

void StoredList::save(const QList<records::BlockedApplication> &applications)
{
    m_persistenceQueue->add([&preferences = m_preferences, applications] {
        preferences.setData(defaultsKey, records::encodedApplications(applications));
    });
}

std::optional<QList<records::BlockedApplication>> StoredList::load(
    const platform::Preferences &preferences)
{
    const auto bytes = preferences.data(defaultsKey);
    return bytes ? records::decodedApplications(*bytes) : std::nullopt;
}

} // namespace zorvane::app
