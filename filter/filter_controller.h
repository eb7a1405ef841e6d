#pragma once

#include "filter/filter_status.h"
#include "platform/filter_manager.h"
#include "platform/log.h"
#include "platform/main_bundle.h"
#include "platform/main_thread.h"
#include "platform/scheduler.h"
#include "platform/system_extensions.h"

#include <memory>
#include <optional>
#include <QObject>
#include <QStringList>
#include <QUuid>

namespace zorvane::filter
{

/**
 * Installs the filter extension and writes the filter configuration. Every operation returns at
 * once and reports only through status() and the log. Main thread; always held by a shared pointer,
 * so that answers of the system can ask whether it still lives.
 */
class FilterController final : public QObject,
                               public platform::ActivationDelegate,
                               public std::enable_shared_from_this<FilterController>
{
    Q_OBJECT
    Q_PROPERTY(zorvane::filter::FilterStatus status READ status NOTIFY statusChanged)

public:
    /** The services that the controller works with; all outlive it. */
    struct Services {
        platform::Scheduler &scheduler;
        platform::Log &log;
        platform::MainBundle &mainBundle;
        platform::FilterManager &filterManager;
        platform::SystemExtensions &systemExtensions;
    };

    explicit FilterController(const Services &services);
    ~FilterController() override;

    [[nodiscard]] FilterStatus status() const { return m_status; }

    /**
     * Reads the filter's state anew. If @p codeIdentityKeys are given and the filter turns out to
     * be enabled, goes on with requestActivation(), so that the extension in this program's bundle
     * and the current rules take effect.
     */
    void refreshStatus(const std::optional<QStringList> &codeIdentityKeys = std::nullopt,
        const QStringList &applicationPaths = {});

    /**
     * Keeps the rules and activates the extension; they are written, with the filter enabled, when
     * the activation completes. At most one request is outstanding.
     */
    void requestActivation(
        const QStringList &codeIdentityKeys, const QStringList &applicationPaths);

    /** Writes the rules and leaves the filter switched as it is. */
    void applyRules(const QStringList &codeIdentityKeys, const QStringList &applicationPaths);

    /** Switches the filter off; the extension stays installed and the rules stay written. */
    void disableFilter();

    /** True if the running bundle, links resolved, lies below "/Applications/". */
    [[nodiscard]] Q_INVOKABLE bool isRunningFromApplicationsFolder() const;

    // ActivationDelegate, on any thread
    [[nodiscard]] platform::ReplacementAction actionForReplacingExtension() override;
    void requestNeedsUserApproval() override;
    void requestDidFinish(platform::ActivationResult result) override;
    void requestDidFail(const platform::PlatformError &error) override;

Q_SIGNALS:
    /** At every assignment, also when the new value equals the old one. */
    void statusChanged();

private:
    /** One write of the configuration, with all that its retries need. */
    struct ConfigurationWrite {
        QUuid generation;
        QString extensionIdentifier;
        QStringList codeIdentityKeys;
        QStringList applicationPaths;
        /** Absent: the filter stays switched as it is. */
        std::optional<bool> enabled;
        int attempt = 0;
    };

    void setStatus(const FilterStatus &status);
    /** Shows an error as waiting for the user, or as failed with its text. */
    void setStatus(const platform::PlatformError &error);
    void setPendingRules(const QStringList &codeIdentityKeys, const QStringList &applicationPaths);
    [[nodiscard]] QString extensionBundleIdentifier() const;
    /** A function for any thread that calls @p answer on the main thread, if this lives then. */
    template <typename Answer>
    [[nodiscard]] auto answeredHere(Answer answer)
    {
        return platform::onMainThread(m_services.scheduler, weak_from_this(), std::move(answer));
    }

    void statusLoaded(const std::optional<platform::PlatformError> &error,
        const std::optional<QStringList> &codeIdentityKeys, const QStringList &applicationPaths);

    void approvalNeeded();
    void activationFinished(platform::ActivationResult result);
    void activationFailed(const platform::PlatformError &error);

    void startWrite(std::optional<bool> enabled);
    void writeConfiguration(const ConfigurationWrite &write);
    void configurationLoaded(
        const ConfigurationWrite &write, const std::optional<platform::PlatformError> &error);
    void configurationSaved(
        const ConfigurationWrite &write, const std::optional<platform::PlatformError> &error);
    void retryLater(const ConfigurationWrite &write);
    [[nodiscard]] bool isCurrent(const ConfigurationWrite &write) const;

    Services m_services;
    FilterStatus m_status;
    /** Both normalised. */
    QStringList m_pendingCodeIdentityKeys;
    QStringList m_pendingApplicationPaths;
    std::unique_ptr<platform::ActivationRequest> m_activationRequest;
    QUuid m_configurationGeneration = QUuid::createUuid();
};

} // namespace zorvane::filter
