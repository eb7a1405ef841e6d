#pragma once

#include "app/blocked_list.h"
#include "app/discovery.h"
#include "app/protection.h"
#include "app/stored_list.h"
#include "filter/filter_controller.h"
#include "inspection/application_inspector.h"
#include "platform/main_thread.h"
#include "platform/platform.h"
#include "updates/update_controller.h"
#include "updates/update_notification_controller.h"

#include <functional>
#include <memory>
#include <optional>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

namespace zorvane::app
{

/**
 * The program's central model: the list of blocked applications, loaded once, saved at every
 * change, and handed to the filter. One lives for the whole process, on the main thread; slow work
 * runs elsewhere and comes back.
 */
class AppBlockStore final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(zorvane::filter::FilterController *filterController READ filterController CONSTANT)
    Q_PROPERTY(zorvane::updates::UpdateController *updateController READ updateController CONSTANT)
    Q_PROPERTY(bool hasLoadedApplications READ hasLoadedApplications NOTIFY applicationsChanged)
    Q_PROPERTY(bool isAddingApplication READ isAddingApplication NOTIFY isAddingApplicationChanged)
    Q_PROPERTY(QString alertMessage READ alertText NOTIFY alertMessageChanged)
    Q_PROPERTY(
        bool isDropTargeted READ isDropTargeted WRITE setDropTargeted NOTIFY isDropTargetedChanged)
    Q_PROPERTY(bool isProtectionEnabled READ isProtectionEnabled NOTIFY protectionChanged)

public:
    /** Starts the load of the saved list and the launch's check for updates; of what is stored,
     * only the last good manifest is read here. @p platform outlives the store. */
    explicit AppBlockStore(platform::Platform &platform);
    ~AppBlockStore() override;

    [[nodiscard]] filter::FilterController *filterController() const;
    [[nodiscard]] updates::UpdateController *updateController() { return &m_updateController; }
    /** The blocked list, sorted by name. */
    [[nodiscard]] const QList<records::BlockedApplication> &applications() const;
    /** What the filter saw in the last 30 days, most recent first. */
    [[nodiscard]] const QList<inspection::DiscoveredNetworkProcess> &discoveredProcesses() const;
    /** For each of @p applications what its row unfolds to, with these processes. */
    [[nodiscard]] QList<NetworkComponents> networkComponents(
        const QList<records::BlockedApplication> &applications);
    [[nodiscard]] bool isAddingApplication() const { return m_isAddingApplication; }
    /** What the user has to be told, until it is dismissed. */
    [[nodiscard]] const std::optional<QString> &alertMessage() const { return m_alertMessage; }
    /** The same for views: empty if there is nothing to tell. */
    [[nodiscard]] QString alertText() const { return m_alertMessage.value_or(QString()); }
    [[nodiscard]] bool isDropTargeted() const { return m_isDropTargeted; }
    void setDropTargeted(bool targeted);
    /** Always false. */
    [[nodiscard]] bool isMarketingPreview() const { return m_isMarketingPreview; }
    /** False until the saved list has been read; until then no rules go to the filter. */
    [[nodiscard]] bool hasLoadedApplications() const;

    /** Inspects the bundle at a dropped file URL and adds it. Ignored while another is being added.
     */
    Q_INVOKABLE void addApplication(const QUrl &url);
    /** Adds an inspected record, unless it is this product or listed, and switches protection on.
     * This, remove() and save() do nothing before the saved list has been loaded. */
    void add(const records::BlockedApplication &application);
    /** Removes the record with the same id and takes its rules from the filter. */
    void remove(const records::BlockedApplication &application);
    /** Saves the list as it is now; returns at once. */
    void save();
    /** Inspects records of older inspections anew; those whose bundle cannot be read stay. */
    void reinspectStaleApplications();

    /** One pass over what the filter saw; the timer's, every five seconds. */
    void refreshDiscoveredProcesses();

    [[nodiscard]] bool isProtectionEnabled() const;
    Q_INVOKABLE void setProtectionEnabled(bool on);
    /** Says why the switch cannot be used; called for a tap on the disabled switch. */
    Q_INVOKABLE void explainProtectionUnavailable();
    /** Brings the filter's state up to date: the window became active, or the user retries. */
    Q_INVOKABLE void refreshProtection();
    /** Shows Downloads and Applications in the file browser. */
    Q_INVOKABLE void openInstallationFolders();
    Q_INVOKABLE void dismissAlert();

    /** Looks for a newer release; returns at once. Only a check that the user asked for says how it
     * ended. */
    Q_INVOKABLE void checkForUpdates(bool userInitiated);

    /** The rules that the present list means. */
    [[nodiscard]] QStringList blockedCodeIdentityKeys() const;
    [[nodiscard]] QStringList blockedApplicationPaths() const;

Q_SIGNALS:
    void applicationsChanged();
    void discoveredProcessesChanged();
    void isAddingApplicationChanged();
    void alertMessageChanged();
    void isDropTargetedChanged();
    /** The filter's status was assigned, be it to the same value. */
    void protectionChanged();
    /** Anything of the update controller changed. */
    void updatesChanged();

private:
    using Applications = QList<records::BlockedApplication>;

    void setAlertMessage(const std::optional<QString> &message);
    void setAddingApplication(bool adding);
    void startLoading();
    void applicationsLoaded(const StoredList::Loaded &stored);
    void applicationInspected(
        const QUrl &url, bool hasAccess, const inspection::InspectionResult &result);
    void applicationsReinspected(const Applications &renewed);
    void applicationsMerged(const Applications &merged);

    platform::Platform &m_platform;
    inspection::ApplicationInspector m_inspector;
    std::shared_ptr<filter::FilterController> m_filterController;
    updates::UpdateController m_updateController;
    std::shared_ptr<updates::UpdateNotificationController> m_updateNotifications;
    BlockedList m_list;
    StoredList m_storedList;
    Protection m_protection;
    Discovery m_discovery;
    bool m_isAddingApplication = false;
    std::optional<QString> m_alertMessage;
    bool m_isDropTargeted = false;
    const bool m_isMarketingPreview = false;
    /** An addition that was inspected before the saved list was there. */
    std::function<void()> m_waitingForList;
    platform::Lifetime m_lifetime;
};

} // namespace zorvane::app
