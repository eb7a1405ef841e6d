#include "app/app_block_store.h"

#include "app/reinspection.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::app
{

using inspection::ApplicationInspectionError;
using inspection::InspectionResult;
using platform::Priority;
using records::BlockedApplication;

AppBlockStore::AppBlockStore(platform::Platform &platform)
    : m_platform(platform)
    , m_inspector({*platform.bundles, *platform.signatures, *platform.walk, *platform.icons})
    , m_filterController(std::make_shared<filter::FilterController>(
          filter::FilterController::Services{*platform.scheduler, *platform.log,
              *platform.mainBundle, *platform.filterManager, *platform.systemExtensions}))
    , m_updateController({*platform.scheduler, *platform.preferences, *platform.mainBundle,
          *platform.manifestFetcher, *platform.actions})
    , m_updateNotifications(std::make_shared<updates::UpdateNotificationController>(
          updates::UpdateNotificationController::Services{*platform.scheduler,
              *platform.preferences, *platform.notifications, *platform.actions}))
    , m_storedList(
          *platform.preferences, *platform.scheduler, SetAsideLists(platform.setAsideFolder))
    , m_protection(m_filterController, {*platform.preferences, *platform.mainBundle, m_list})
    , m_discovery({*platform.scheduler,
          inspection::DiscoveredProcesses({*platform.entitlements, *platform.suites}), m_list})
{
    connect(m_filterController.get(), &filter::FilterController::statusChanged, this,
        &AppBlockStore::protectionChanged);
    connect(&m_discovery, &Discovery::discoveredProcessesChanged, this,
        &AppBlockStore::discoveredProcessesChanged);
    connect(&m_discovery, &Discovery::applicationsMerged, this, &AppBlockStore::applicationsMerged);
    connect(&m_updateController, &updates::UpdateController::changed, this,
        &AppBlockStore::updatesChanged);
    m_updateNotifications->registerCategories();
    checkForUpdates(false);
    startLoading();
}

AppBlockStore::~AppBlockStore() = default;

filter::FilterController *AppBlockStore::filterController() const
{
    return m_filterController.get();
}

const QList<BlockedApplication> &AppBlockStore::applications() const
{
    return m_list.applications();
}

const QList<inspection::DiscoveredNetworkProcess> &AppBlockStore::discoveredProcesses() const
{
    return m_discovery.discoveredProcesses();
}

void AppBlockStore::checkForUpdates(bool userInitiated)
{
    const auto check
        = [this, userInitiated] { m_updateController.checkForUpdates(true, userInitiated); };
    platform::onMainThread(*m_platform.scheduler, m_lifetime.watch(), check)();
}

QList<NetworkComponents> AppBlockStore::networkComponents(const Applications &applications)
{
    return m_discovery.networkComponents(applications);
}

bool AppBlockStore::hasLoadedApplications() const
{
    return m_list.hasLoaded();
}

void AppBlockStore::startLoading()
{
    platform::runInBackground(
        *m_platform.scheduler, Priority::UserInitiated, m_lifetime.watch(),
        [&preferences = *m_platform.preferences] { return StoredList::load(preferences); },
        [this](const StoredList::Loaded &stored) { applicationsLoaded(stored); });
}

void AppBlockStore::applicationsLoaded(const StoredList::Loaded &stored)
{
    m_storedList.setAsideBeforeSave(stored.unreadable);
    Applications applications = stored.applications;
    const auto ownBundleIdentifier = m_platform.mainBundle->identifier();
    const auto dropped = applications.removeIf([&](const BlockedApplication &application) {
        return records::isOwnApplication(application, ownBundleIdentifier);
    });
    m_list.load(applications);
    if (dropped > 0)
        save();
    Q_EMIT applicationsChanged();
    // Before the filter is asked for its state: the rules that go with that question are the
    // newest.
    if (m_waitingForList)
        std::exchange(m_waitingForList, nullptr)();
    m_protection.listLoaded();
    reinspectStaleApplications();
}

void AppBlockStore::addApplication(const QUrl &url)
{
    if (m_isAddingApplication)
        return;
    const bool hasAccess = m_platform.fileAccess->begin(url);
    setAddingApplication(true);
    platform::runInBackground(
        *m_platform.scheduler, Priority::UserInitiated, m_lifetime.watch(),
        [inspector = m_inspector, url] {
            return inspector.inspectApplication(url, QUuid::createUuid());
        },
        [this, url, hasAccess](const InspectionResult &result) {
            // Saved before the list is loaded, an addition would overwrite all that is stored.
            if (m_list.hasLoaded())
                applicationInspected(url, hasAccess, result);
            else
                m_waitingForList = [this, url, hasAccess, result] {
                    applicationInspected(url, hasAccess, result);
                };
        });
}

void AppBlockStore::applicationInspected(
    const QUrl &url, bool hasAccess, const InspectionResult &result)
{
    if (hasAccess)
        m_platform.fileAccess->end(url);
    setAddingApplication(false);
    if (const auto *application = std::get_if<BlockedApplication>(&result))
        add(*application);
    else
        setAlertMessage(inspection::describe(std::get<ApplicationInspectionError>(result)));
}

void AppBlockStore::add(const BlockedApplication &application)
{
    if (!m_list.hasLoaded())
        return;
    if (records::isOwnApplication(application, m_platform.mainBundle->identifier())) {
        setAlertMessage(u"Zorvane cannot block itself."_s);
        return;
    }
    if (m_list.containsSigningIdentifier(application.signingIdentifier)) {
        setAlertMessage(application.name + " is already on the list."_L1);
        return;
    }
    m_list.insert(application);
    Q_EMIT applicationsChanged();
    save();
    // By design, putting an application on the list means that it is blocked from now on.
    m_protection.setEnabled(true);
}

void AppBlockStore::remove(const BlockedApplication &application)
{
    if (!m_list.hasLoaded())
        return;
    m_list.remove(application.id);
    Q_EMIT applicationsChanged();
    save();
    // Even while the filter is off: a rule that was taken back must not return with it.
    m_protection.applyRules();
}

void AppBlockStore::save()
{
    // What is stored is not known yet, and must not be overwritten.
    if (!m_list.hasLoaded())
        return;
    m_storedList.save(m_list.applications());
}

void AppBlockStore::reinspectStaleApplications()
{
    const Applications stale = m_list.staleApplications();
    if (stale.isEmpty())
        return;
    platform::runInBackground(
        *m_platform.scheduler, Priority::Utility, m_lifetime.watch(),
        [inspector = m_inspector, stale, owner = m_lifetime.watch()] {
            return reinspected(inspector, stale, owner);
        },
        [this](const Applications &renewed) {
            m_discovery.prepare(renewed, [this, renewed] { applicationsReinspected(renewed); });
        });
}

void AppBlockStore::applicationsReinspected(const Applications &renewed)
{
    m_list.replace(byUniqueId(renewed));
    Q_EMIT applicationsChanged();
    save();
    m_protection.applyRulesIfEnabled();
}

void AppBlockStore::refreshDiscoveredProcesses()
{
    m_discovery.refreshDiscoveredProcesses();
}

void AppBlockStore::applicationsMerged(const Applications &merged)
{
    m_list.assign(merged);
    Q_EMIT applicationsChanged();
    save();
    m_protection.applyRulesIfEnabled();
}

void AppBlockStore::setDropTargeted(bool targeted)
{
    if (m_isDropTargeted == targeted)
        return;
    m_isDropTargeted = targeted;
    Q_EMIT isDropTargetedChanged();
}

void AppBlockStore::setAddingApplication(bool adding)
{
    m_isAddingApplication = adding;
    Q_EMIT isAddingApplicationChanged();
}

void AppBlockStore::setAlertMessage(const std::optional<QString> &message)
{
    m_alertMessage = message;
    Q_EMIT alertMessageChanged();
}

void AppBlockStore::dismissAlert()
{
    setAlertMessage(std::nullopt);
}

bool AppBlockStore::isProtectionEnabled() const
{
    return m_protection.isEnabled();
}

void AppBlockStore::setProtectionEnabled(bool on)
{
    m_protection.setEnabled(on);
}

void AppBlockStore::explainProtectionUnavailable()
{
    if (const auto explanation = m_protection.explanationWhyUnavailable())
        setAlertMessage(explanation);
}

void AppBlockStore::refreshProtection()
{
    m_protection.refresh();
}

void AppBlockStore::openInstallationFolders()
{
    const auto downloads = m_platform.actions->downloadsFolders();
    if (!downloads.isEmpty())
        m_platform.actions->openFolder(downloads.constFirst());
    m_platform.actions->openFolder(u"/Applications"_s);
}

QStringList AppBlockStore::blockedCodeIdentityKeys() const
{
    return m_protection.codeIdentityKeys();
}

QStringList AppBlockStore::blockedApplicationPaths() const
{
    return m_protection.applicationPaths();
}

} // namespace zorvane::app
