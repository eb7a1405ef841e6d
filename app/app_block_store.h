#pragma once

#include "app/protection.h"
#include "app/records/blocked_application.h"
#include "filter/filter_controller.h"
#include "inspection/application_inspector.h"
#include "platform/main_thread.h"
#include "platform/platform.h"

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
    Q_PROPERTY(bool isAddingApplication READ isAddingApplication NOTIFY isAddingApplicationChanged)
    Q_PROPERTY(QString alertMessage READ alertText NOTIFY alertMessageChanged)
    Q_PROPERTY(
        bool isDropTargeted READ isDropTargeted WRITE setDropTargeted NOTIFY isDropTargetedChanged)
    Q_PROPERTY(bool isProtectionEnabled READ isProtectionEnabled NOTIFY protectionChanged)

public:
    /** Starts the load of the saved list; nothing is read here. @p platform outlives the store. */
    explicit AppBlockStore(platform::Platform &platform);
    ~AppBlockStore() override;

    [[nodiscard]] filter::FilterController *filterController() const;
    /** The blocked list, sorted by name. */
    [[nodiscard]] const QList<records::BlockedApplication> &applications() const;
    [[nodiscard]] bool isAddingApplication() const { return m_isAddingApplication; }
    /** What the user has to be told, until it is dismissed. */
    [[nodiscard]] const std::optional<QString> &alertMessage() const { return m_alertMessage; }
    [[nodiscard]] bool isDropTargeted() const { return m_isDropTargeted; }
    void setDropTargeted(bool targeted);
    /** False until the saved list has been read; until then no rules go to the filter. */
    [[nodiscard]] bool hasLoadedApplications() const { return m_hasLoadedApplications; }

    /** Inspects the bundle at a dropped file URL and adds it. Ignored while another is being added.
     */
    Q_INVOKABLE void addApplication(const QUrl &url);
    /** Adds an inspected record, unless it is this product or already listed, and switches
     * protection on. */
    void add(const records::BlockedApplication &application);
    /** Removes the record with the same id. */
    void remove(const records::BlockedApplication &application);
    /** Inspects records of older inspections again; those whose bundle cannot be read stay as they
     * are. */
    void reinspectStaleApplications();

    [[nodiscard]] bool isProtectionEnabled() const;
    Q_INVOKABLE void setProtectionEnabled(bool on);
    /** Says why the switch cannot be used; called for a tap on the disabled switch. */
    Q_INVOKABLE void explainProtectionUnavailable();
    /** Brings the filter's state up to date: the window became active, or the user retries. */
    Q_INVOKABLE void refreshProtection();
    /** Shows Downloads and Applications in the file browser. */
    Q_INVOKABLE void openInstallationFolders();
    Q_INVOKABLE void dismissAlert();

Q_SIGNALS:
    void applicationsChanged();
    void isAddingApplicationChanged();
    void alertMessageChanged();
    void isDropTargetedChanged();
    /** The filter's status was assigned. */
    void protectionChanged();
};

} // namespace zorvane::app
