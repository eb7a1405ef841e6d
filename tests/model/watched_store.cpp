#include "model/watched_store.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using Status = filter::FilterStatus::Kind;

namespace
{

const QString wishKey = u"protectionRequested"_s;

QString nameOfRefusal(const QString &alert)
{
    return alert.endsWith(" is already on the list."_L1) ? u"refusal: already listed"_s
                                                         : u"refusal: "_s + alert;
}

} // namespace

WatchedStore::WatchedStore(const World &world)
    : m_world(world)
    , m_system(world.fixture.system)
    , m_atStart(m_system.preferences.data(listKey).value_or(QByteArray()))
    , m_changes(world.fixture.storedList(), world.observed)
    , m_wasWishKnown(isWishKnown())
{
    m_system.preferences.written.clear();
    m_system.fileAccess.begun = 0;
    m_system.fileAccess.ended = 0;
    m_world.observed.programStarted();
    m_store = std::make_unique<app::AppBlockStore>(m_system.ports);
    QObject::connect(m_store.get(), &app::AppBlockStore::applicationsChanged, m_store.get(),
        [this] { listChanged(); });
    QObject::connect(m_store.get(), &app::AppBlockStore::alertMessageChanged, m_store.get(),
        [this] { alertChanged(); });
    QObject::connect(m_store->filterController(), &filter::FilterController::statusChanged,
        m_store.get(), [this] { statusChanged(); });
}

void WatchedStore::drop(const QString &path)
{
    if (!m_store->isAddingApplication())
        m_changes.dropped(path);
    m_store->addApplication(QUrl::fromLocalFile(path));
}

void WatchedStore::remove(const records::BlockedApplication &application)
{
    if (m_changes.isLoaded())
        m_changes.removing(application.id);
    m_store->remove(application);
}

void WatchedStore::reinspect()
{
    m_changes.reinspecting();
    m_store->reinspectStaleApplications();
}

void WatchedStore::switchProtection(bool on)
{
    m_wasWishKnown = true;
    m_store->setProtectionEnabled(on);
    if (!isWishKnown() || m_system.preferences.boolean(wishKey) != on)
        m_broken = u"the switch did not write the wish"_s;
}

void WatchedStore::explain()
{
    if (m_store->filterController()->status() == Status::InstallationRequired)
        m_alert = u"Move Zorvane to your Mac's Applications folder, quit this copy, and open it "
                  "again from Applications before turning on protection."_s;
    m_isAlertAsked = true;
    m_store->explainProtectionUnavailable();
    m_isAlertAsked = false;
}

void WatchedStore::dismissAlert()
{
    m_alert.reset();
    m_isAlertAsked = true;
    m_store->dismissAlert();
    m_isAlertAsked = false;
}

void WatchedStore::listChanged()
{
    const QString event = m_changes.changed(m_store->applications());
    ++m_world.happened[event];
    m_lists.append(m_changes.shown());
    if (event == u"addition"_s) {
        m_hasAdded = true;
        // It is written next.
        m_wasWishKnown = true;
    }
    if (event == u"load"_s && m_changes.isDropPending())
        ++m_world.happened[u"drop that waits for the list"_s];
    if (whenChanged)
        whenChanged(event);
}

void WatchedStore::alertChanged()
{
    if (m_isAlertAsked)
        return;
    m_alert = m_store->alertMessage();
    if (!m_changes.isDropPending() || m_store->isAddingApplication()) {
        m_broken = u"an alert out of the blue"_s;
        return;
    }
    ++m_world.happened[nameOfRefusal(m_store->alertText())];
    m_changes.refused(m_store->alertText());
}

void WatchedStore::statusChanged()
{
    const Status status = m_store->filterController()->status().kind();
    if (status == Status::Enabled && !m_system.filterManager.isEnabled())
        m_broken = u"enabled while the configuration is not"_s;
    if (status == Status::Inactive && m_system.filterManager.isEnabled())
        m_broken = u"inactive while the configuration is enabled"_s;
    if (m_store->isProtectionEnabled() != (status == Status::Enabled))
        m_broken = u"the switch does not follow the status"_s;
    if (isWishKnown() && !std::exchange(m_wasWishKnown, true))
        wishWritten();
}

/** Without the user; perhaps with what follows from it already begun. */
void WatchedStore::wishWritten()
{
    const bool wish = m_system.preferences.boolean(wishKey);
    ++m_world.happened[wish ? u"wish taken from the status"_s : u"no wish taken from it"_s];
    const Status status = m_store->filterController()->status().kind();
    const bool expected = status == Status::Enabled || !m_changes.shown().isEmpty();
    if (status == Status::Failed || status == Status::AwaitingApproval || wish != expected)
        m_broken = u"another wish was taken from the status"_s;
}

bool WatchedStore::isWishKnown() const
{
    return m_system.preferences.contains(wishKey);
}

QString WatchedStore::broken()
{
    for (const QString &each : {m_broken, m_changes.broken(), brokenSystem(), brokenList(),
             brokenAddition(), brokenStorage()}) {
        if (!each.isEmpty())
            return each;
    }
    return {};
}

QString WatchedStore::brokenAtRest()
{
    // Its activation may have ended since.
    m_hasAdded = false;
    QString broken = this->broken();
    return broken.isEmpty() ? owed() : broken;
}

QString WatchedStore::brokenSystem() const
{
    if (m_system.systemExtensions.overlapping)
        return u"activation was requested again while a request was outstanding"_s;
    const int inUse = m_system.fileAccess.begun - m_system.fileAccess.ended;
    if (inUse != (m_store->isAddingApplication() ? 1 : 0))
        return u"%1 dropped items are in use"_s.arg(inUse);
    return {};
}

QString WatchedStore::brokenList() const
{
    if (m_store->applications() != m_changes.shown())
        return u"the list changed without a word"_s;
    if (m_store->alertMessage() != m_alert)
        return u"another alert is shown than the last"_s;
    if (m_changes.isDropPending() != m_store->isAddingApplication())
        return u"what was dropped was neither listed nor refused"_s;
    return {};
}

/** What is added is blocked from then on. */
QString WatchedStore::brokenAddition()
{
    if (!std::exchange(m_hasAdded, false))
        return {};
    if (!m_system.preferences.boolean(wishKey))
        return u"an addition did not write the wish"_s;
    const bool isInApplications = m_system.mainBundle.path.string().starts_with("/Applications/");
    if (isInApplications && !m_system.systemExtensions.isOutstanding())
        return u"an addition did not request activation"_s;
    return {};
}

/** What is saved is what is shown, as soon as nothing is under way, and one of the last lists
 * before. */
QString WatchedStore::brokenStorage()
{
    if (!m_system.preferences.written.contains(listKey)) {
        if (m_system.preferences.data(listKey).value_or(QByteArray()) != m_atStart)
            return u"the stored list changed without being saved"_s;
    } else {
        const Applications stored = m_world.fixture.storedList();
        while (!m_lists.isEmpty() && m_lists.first() != stored)
            m_lists.removeFirst();
        if (m_lists.isEmpty())
            return u"what was stored was not shown, or not after what was stored before"_s;
    }
    if (m_changes.isLoaded() && m_system.scheduler.waitingBackgroundJobs() == 0
        && m_world.fixture.storedList() != m_changes.shown())
        return u"what is saved is not what is shown"_s;
    return {};
}

QString WatchedStore::owed() const
{
    if (QString owed = m_changes.owed(m_system.scheduler.now()); !owed.isEmpty())
        return owed;
    if (!m_world.observed.possiblyFound().contains(m_store->discoveredProcesses()))
        return u"other processes are shown than were observed"_s;
    const Status status = m_store->filterController()->status().kind();
    if (!isWishKnown() && (status == Status::Enabled || status == Status::Inactive))
        return u"no wish was taken from the status"_s;
    return {};
}

QString WatchedStore::end()
{
    m_store.reset();
    m_system.scheduler.shutDown();
    if (m_changes.isLoaded() && m_world.fixture.storedList() != m_changes.shown())
        return u"what was shown was not saved at the end"_s;
    return brokenStorage();
}

QString WatchedStore::kill()
{
    m_system.scheduler.kill();
    m_store.reset();
    if (m_changes.isLoaded() && m_world.fixture.storedList() != m_changes.shown()) {
        ++m_world.happened[u"kill before a save"_s];
        // It is not to be expected any more.
        m_changes = ListChanges({}, m_world.observed);
    }
    return brokenStorage();
}

} // namespace zorvane::tests
