#include "model/store_world.h"

#include "model/modelled_applications.h"
#include "model/seen_filter.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

const QString wishKey = u"protectionRequested"_s;

/** What has to happen in many runs. */
const QStringList expectedEvents{u"load"_s, u"addition"_s, u"removal"_s, u"re-inspection"_s,
    u"another application"_s, u"merge"_s, u"new form"_s, u"drop that waits for the list"_s,
    u"wish taken from the status"_s, u"no wish taken from it"_s, u"kill before a save"_s,
    u"newest rules at rest"_s, u"refusal: already listed"_s,
    u"refusal: Zorvane cannot block itself."_s,
    u"refusal: Drop an application with the .app extension."_s,
    u"refusal: This application's identifier could not be read."_s,
    u"refusal: This application does not have an identifiable code signature."_s};

} // namespace

StoreWorld::StoreWorld(quint32 seed)
    : m_answers(m_fixture.system)
    , m_bundles(m_fixture.system)
    , m_observed(m_fixture.system.scheduler.now())
    , m_damaged(m_fixture.system)
{
    for (const QString &event : expectedEvents)
        m_happened[event] = 0;
    QRandomGenerator random(seed);
    const auto any = [&random] { return int(random.bounded(1 << 16)); };
    for (int i = 0; i < modelledApplications; ++i)
        m_bundles.change(any() / modelledApplications * modelledApplications + i);
    storeSomething(system().preferences, any());
    system().filterManager.stored.enabled = any() % 2 == 0;
    m_answers.setHealthy(any() % 2 == 0);
    if (const int wish = any() % 3; wish != 2)
        system().preferences.values.insert(wishKey, wish == 1);
    system().bundles.whenOpened
        = [this](const QString &path) { m_run->inspected(path, m_bundles.inspected(path)); };
    system().suites.whenOpened = [this] { m_observed.wereRead(system().scheduler.now()); };
    start(any() % 8 == 0 ? Between::Damage : Between::Nothing);
}

StoreWorld::~StoreWorld()
{
    static_cast<void>(m_run->end());
}

void StoreWorld::start(Between between)
{
    if (between == Between::Damage)
        m_damaged.damage();
    m_newest.reset();
    m_launchIsUnanswered = false;
    m_run = std::make_unique<WatchedStore>(WatchedStore::World{m_fixture, m_observed, m_happened});
    m_run->whenChanged = [this](const QString &event) { listChanged(event); };
}

QString StoreWorld::startAgain(Between between)
{
    QString broken = m_run->end();
    start(between);
    return broken;
}

QString StoreWorld::killAndStartAgain(Between between)
{
    QString broken = m_run->kill();
    start(between);
    return broken;
}

void StoreWorld::remove(const records::BlockedApplication &application)
{
    m_run->remove(application);
    if (store().hasLoadedApplications())
        pushed();
}

void StoreWorld::listChanged(const QString &event)
{
    if (event == u"load"_s)
        m_launchIsUnanswered = true;
    // An addition pushes only once it has written the wish, with its activation.
    else if (store().isProtectionEnabled())
        pushed();
}

/** A write of the rules as they are now has begun. The answer to the launch's look at the filter
 * brings the rules of the launch once more. */
void StoreWorld::pushed()
{
    m_newest.reset();
    if (!m_launchIsUnanswered)
        m_newest = Push{expectedRules(store().applications()), writtenWishes()};
}

void StoreWorld::stepEnded(bool mayFail)
{
    m_observed.timeIs(system().scheduler.now());
    if (mayFail || m_answers.willFail())
        m_newest.reset();
    m_launchIsUnanswered = m_launchIsUnanswered && m_answers.isAnswering();
}

QString StoreWorld::rested()
{
    m_answers.comeToRest();
    QString broken = m_run->brokenAtRest();
    return broken.isEmpty() ? m_damaged.broken() : broken;
}

QString StoreWorld::brokenRules()
{
    if (!m_newest || m_newest->wishes != writtenWishes())
        return {};
    ++m_happened[u"newest rules at rest"_s];
    return storedRules() == m_newest->rules ? QString()
                                            : u"the newest rules are not the stored ones"_s;
}

Rules StoreWorld::storedRules() const
{
    return storedConfiguration(m_fixture.system.filterManager).rules;
}

/** How often the wish for protection was written; other rules may follow each time. */
qsizetype StoreWorld::writtenWishes() const
{
    return m_fixture.system.preferences.written.count(wishKey);
}

Counts StoreWorld::happened() const
{
    Counts result = m_happened;
    result[u"damaged list overwritten"_s] = m_damaged.count();
    return result;
}

} // namespace zorvane::tests
