#pragma once

#include "platform/main_bundle.h"
#include "platform/main_thread.h"
#include "platform/manifest_fetcher.h"
#include "platform/preferences.h"
#include "platform/scheduler.h"
#include "platform/system_actions.h"
#include "updates/app_update.h"
#include "updates/download_address.h"

#include <functional>
#include <optional>
#include <QObject>
#include <QString>
#include <QVariant>

namespace zorvane::updates
{

/**
 * Finds out whether a newer version is published. Downloads and installs nothing: it opens the
 * release's page. Main thread.
 */
class UpdateController final : public QObject
{
    Q_OBJECT
    /** An AppUpdate, or undefined if no newer release is known. */
    Q_PROPERTY(QVariant availableUpdate READ availableUpdateForViews NOTIFY changed)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY changed)
    Q_PROPERTY(QString message READ messageForViews NOTIFY changed)
    Q_PROPERTY(bool isBannerVisible READ isBannerVisible WRITE setBannerVisible NOTIFY changed)

public:
    /** The services that the controller works with; all outlive it. */
    struct Services {
        platform::Scheduler &scheduler;
        platform::Preferences &preferences;
        platform::MainBundle &mainBundle;
        platform::ManifestFetcher &fetcher;
        platform::SystemActions &actions;
    };

    /** Takes up what the last good manifest said. */
    explicit UpdateController(const Services &services, QUrl manifestURL = manifestAddress());
    ~UpdateController() override;

    /** The newer release, if one is known. */
    [[nodiscard]] const std::optional<AppUpdate> &availableUpdate() const
    {
        return m_availableUpdate;
    }
    [[nodiscard]] QVariant availableUpdateForViews() const;
    [[nodiscard]] bool isChecking() const { return m_isChecking; }
    /** How the last check ended that the user asked for. */
    [[nodiscard]] const std::optional<QString> &message() const { return m_message; }
    /** The same for views: empty if there is nothing to tell. */
    [[nodiscard]] QString messageForViews() const { return m_message.value_or(QString()); }
    [[nodiscard]] bool isBannerVisible() const { return m_isBannerVisible; }
    /** Hides the banner until a check finds the release again; the choice is not stored. */
    void setBannerVisible(bool visible);

    /**
     * Looks for a newer release, unless a check is running. Without @p force at most once a day.
     * Only where @p userInitiated, message() tells how it ended.
     */
    Q_INVOKABLE void checkForUpdates(bool force, bool userInitiated);
    /** The same; @p done is called when the check has ended, or at once if none is made, unless
     * this is gone by then. */
    void checkForUpdates(bool force, bool userInitiated, std::function<void()> done);

    /** Opens the download address of the available update. */
    Q_INVOKABLE void openDownload();

    /** The running version for people, as in "2.1 (57)". */
    [[nodiscard]] Q_INVOKABLE QString currentVersionText() const;

Q_SIGNALS:
    /** At every assignment of a property, also when the new value equals the old one. */
    void changed();

private:
    [[nodiscard]] bool hasCheckedLately() const;
    void checkEnded(bool userInitiated, const platform::ManifestFetcher::Result &result);
    void applyCachedManifest();
    void apply(const AppUpdate &update, bool userInitiated);
    [[nodiscard]] bool isNewerThanRunning(const AppUpdate &update) const;
    void setChecking(bool checking);
    void setMessage(const std::optional<QString> &message);

    Services m_services;
    const QUrl m_manifestURL;
    std::optional<AppUpdate> m_availableUpdate;
    bool m_isChecking = false;
    std::optional<QString> m_message;
    bool m_isBannerVisible = false;
    platform::Lifetime m_lifetime;
};

} // namespace zorvane::updates
