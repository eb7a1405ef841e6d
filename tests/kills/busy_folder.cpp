#include "kills/busy_folder.h"

#include "app/records/blocked_application_json.h"
#include "app/sample_applications.h"
#include "discovery/sample_processes.h"
#include "platform/simulated/property_list.h"

#include <QDateTime>
#include <QDir>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using platform::simulated::readPropertyList;
using platform::simulated::stampOf;
using platform::simulated::writePropertyList;
using records::BlockedApplication;

namespace
{

const QString file = u"preferences/dev.kestrelworks.Zorvane.plist"_s;
const QString halfWritten = u"preferences/.dev.kestrelworks.Zorvane.plist.new"_s;
const QString halfConfigured = u".filter-configuration.json.new"_s;
const QString shared = u"preferences/group.dev.kestrelworks.Zorvane.plist"_s;
const QString listKey = u"blockedApplications"_s;
const QString wishKey = u"protectionRequested"_s;
const QString announcedKey = u"updates.lastNotifiedVersion"_s;

constexpr int length = 60;
/** A write of all icons takes a moment, in which a kill can come. */
constexpr qsizetype iconSize = 8000;

QList<BlockedApplication> currentList()
{
    QList<BlockedApplication> list;
    for (int i = 0; i < length; ++i) {
        const QString number = u"%1"_s.arg(i, 2, 10, QChar(u'0'));
        auto application = sampleApplication(u"App "_s + number, u"com.example."_s + number);
        application.iconData = QByteArray(iconSize, char('a' + i % 26));
        list.append(application);
    }
    return list;
}

/** A helper inside the first application. */
inspection::DiscoveredNetworkProcess helper(const BlockedApplication &application)
{
    auto process = sampleProcess(u"com.example.helper"_s, u"TEAM"_s,
        inspection::referenceSeconds(QDateTime::currentDateTimeUtc()));
    process.executablePath = application.path + "/Contents/MacOS/helper"_L1;
    return process;
}

} // namespace

BusyFolder::BusyFolder()
{
    const auto current = currentList();
    auto old = current;
    old.prepend(sampleApplication(u"Zorvane"_s, u"dev.kestrelworks.Zorvane"_s));
    auto merged = current;
    merged.first() = records::mergingObservedIdentities(
        merged.first(), {{u"com.example.helper"_s, u"TEAM"_s}});
    m_stages = {old, current, merged};
    QDir().mkpath(m_folder.filePath(u"preferences"_s));
    m_folder.behave("{'activationDelay': 0}");
    observeHelper();
}

void BusyFolder::observeHelper() const
{
    m_folder.write(shared,
        writePropertyList({{u"discoveredNetworkProcesses.v2"_s,
            inspection::encodedProcesses({helper(m_stages.at(1).first())})}}));
}

void BusyFolder::storeOldList()
{
    store(m_stages.first());
}

void BusyFolder::storeCurrentList()
{
    store(m_stages.at(1));
}

void BusyFolder::store(const QList<BlockedApplication> &list)
{
    setPreferences({{listKey, records::encodedApplications(list)}, {u"kept"_s, u"value"_s}});
}

void BusyFolder::announceVersion(const QString &version)
{
    QVariantMap values = preferences();
    values.insert(u"updates.cachedManifest"_s,
        QByteArray(R"({"version":")" + version.toUtf8()
            + R"(","downloadURL":"https://kestrelworks.dev/zorvane"})"));
    values.insert(u"updates.lastCheckedAt"_s, QDateTime::currentDateTimeUtc());
    setPreferences(values);
}

int BusyFolder::stage() const
{
    return stageOf(preferences());
}

int BusyFolder::stageOf(const QVariantMap &preferences) const
{
    const auto list = records::decodedApplications(preferences.value(listKey).toByteArray());
    return list ? int(m_stages.indexOf(*list)) : -1;
}

QString BusyFolder::announcedVersion() const
{
    return preferences().value(announcedKey).toString();
}

QByteArray BusyFolder::snapshot() const
{
    return m_folder.read(file);
}

QString BusyFolder::undone(const QList<QByteArray> &snapshots) const
{
    int stage = -1;
    QVariantMap before;
    for (const QByteArray &snapshot : snapshots) {
        const QVariantMap now = readPropertyList(snapshot).toMap();
        if (stageOf(now) < stage)
            return u"the list went back from stage %1 to %2"_s.arg(stage).arg(stageOf(now));
        for (const QString &key : {wishKey, announcedKey}) {
            if (before.contains(key) && now.value(key) != before.value(key))
                return key + u" was changed back"_s;
        }
        stage = stageOf(now);
        before = now;
    }
    return {};
}

QString BusyFolder::damage() const
{
    const QVariantMap values = preferences();
    if (values.value(u"kept"_s) != u"value"_s)
        return u"a value was lost"_s;
    const QVariant wish = values.value(wishKey, true);
    if (wish.typeId() != QMetaType::Bool)
        return u"the wish for protection is damaged"_s;
    for (const QString &each :
        {u"filter-configuration.json"_s, u"extension.json"_s, u"notifications.json"_s}) {
        if (m_folder.hasFile(each) && !QJsonDocument::fromJson(m_folder.read(each)).isObject())
            return each + u" is damaged"_s;
    }
    // No part of the state was ever found damaged and kept aside.
    for (const QString &folder : {QString(), u"preferences"_s}) {
        if (!QDir(m_folder.filePath(folder)).entryList({u"*.damaged-*"_s}).isEmpty())
            return u"something was kept aside"_s;
    }
    return {};
}

void BusyFolder::leaveHalfWritten()
{
    // Whole, and another list, so that it would be noticed if it were taken for the stored one.
    m_folder.write(halfWritten,
        writePropertyList({{listKey, records::encodedApplications({m_stages.first().first()})}}));
    m_folder.write(halfConfigured, "{\"isEnabled\": tr");
    m_leftOver = stampOf(m_folder.path() / halfWritten.toStdString());
}

bool BusyFolder::wasInterrupted() const
{
    const auto found = stampOf(m_folder.path() / halfWritten.toStdString());
    return found && found != m_leftOver;
}

bool BusyFolder::hasHalfWritten() const
{
    return m_folder.hasFile(halfWritten) || m_folder.hasFile(halfConfigured);
}

QVariantMap BusyFolder::preferences() const
{
    return readPropertyList(snapshot()).toMap();
}

void BusyFolder::setPreferences(const QVariantMap &values)
{
    m_folder.write(file, writePropertyList(values));
    m_leftOver = stampOf(m_folder.path() / halfWritten.toStdString());
}

QString setAsideBy(const QString &data)
{
    return QDir(data + "/zorvane/set-aside"_L1)
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
        .join(u' ');
}

void shieldStartedPrograms(const QString &data, const QString &busAddress)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("XDG_DATA_HOME", data.toUtf8());
    qputenv("DBUS_SESSION_BUS_ADDRESS", busAddress.toUtf8());
    // Nobody listens there.
    for (const char *proxy : {"http_proxy", "https_proxy", "all_proxy"})
        qputenv(proxy, "http://127.0.0.1:9");
}

} // namespace zorvane::tests
