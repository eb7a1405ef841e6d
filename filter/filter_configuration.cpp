// The controller's half that writes the filter configuration: load, change, save, and the retries
// while a new permission is still on its way through the system.

#include "filter/filter_controller.h"

#include "filter/error_classification.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace zorvane::filter
{

using platform::PlatformError;

namespace
{

constexpr int mostRetries = 3;
constexpr auto retryDelay = 1500ms;

} // namespace

void FilterController::startWrite(std::optional<bool> enabled)
{
    m_configurationGeneration = QUuid::createUuid();
    writeConfiguration({
        .generation = m_configurationGeneration,
        .extensionIdentifier = extensionBundleIdentifier(),
        .codeIdentityKeys = m_pendingCodeIdentityKeys,
        .applicationPaths = m_pendingApplicationPaths,
        .enabled = enabled,
    });
}

bool FilterController::isCurrent(const ConfigurationWrite &write) const
{
    return write.generation == m_configurationGeneration;
}

void FilterController::writeConfiguration(const ConfigurationWrite &write)
{
    m_services.filterManager.load(
        answeredHere([this, write](const auto &error) { configurationLoaded(write, error); }));
}

void FilterController::configurationLoaded(
    const ConfigurationWrite &write, const std::optional<PlatformError> &error)
{
    if (!isCurrent(write))
        return;
    if (error) {
        m_services.log.error(u"Failed to load filter configuration: "_s + error->description);
        setStatus(*error);
        return;
    }
    platform::FilterManager &manager = m_services.filterManager;
    manager.setProviderConfiguration({
        .filterSockets = true,
        .filterDataProviderBundleIdentifier = write.extensionIdentifier,
        .vendorConfiguration = {
            {u"blockedCodeIdentities"_s, write.codeIdentityKeys},
            // Kept empty: the extension expects the key, the identities above replaced its use.
            {u"blockedSigningIdentifiers"_s, {}},
            {u"blockedApplicationPaths"_s, write.applicationPaths},
        },
    });
    manager.setLocalizedDescription(u"Zorvane"_s);
    if (write.enabled)
        manager.setEnabled(*write.enabled);
    manager.save(answeredHere(
        [this, write](const auto &saveError) { configurationSaved(write, saveError); }));
}

void FilterController::configurationSaved(
    const ConfigurationWrite &write, const std::optional<PlatformError> &error)
{
    if (!isCurrent(write))
        return;
    if (!error) {
        m_services.log.notice(u"Filter configuration saved; reloading confirmed state"_s);
        refreshStatus();
        return;
    }
    if (isFilterPermissionError(*error) && write.attempt < mostRetries) {
        retryLater(write);
        return;
    }
    if (isAwaitingApprovalError(*error))
        m_services.log.notice(u"Filter configuration is waiting for user approval"_s);
    else
        m_services.log.error(u"Failed to save filter configuration: "_s + error->description);
    setStatus(*error);
}

void FilterController::retryLater(const ConfigurationWrite &write)
{
    m_services.log.notice(
        u"Filter permission is still propagating; retrying save (attempt %1)"_s.arg(
            write.attempt + 2));
    ConfigurationWrite next = write;
    ++next.attempt;
    // Held strongly: a retry that was promised is made even if its controller is let go meanwhile.
    m_services.scheduler.after(retryDelay, [self = shared_from_this(), next] {
        if (self->isCurrent(next))
            self->writeConfiguration(next);
    });
}

} // namespace zorvane::filter
