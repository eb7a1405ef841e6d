#include "filter/filter_controller.h"

#include "app/records/own_identifiers.h"
#include "filter/error_classification.h"
#include "filter/rule_normalization.h"

using namespace Qt::StringLiterals;

namespace zorvane::filter
{

using platform::PlatformError;

FilterController::FilterController(const Services &services)
    : m_services(services)
{
}

FilterController::~FilterController() = default;

void FilterController::refreshStatus(
    const std::optional<QStringList> &codeIdentityKeys, const QStringList &applicationPaths)
{
    if (!isRunningFromApplicationsFolder()) {
        setStatus(FilterStatus::Kind::InstallationRequired);
        return;
    }
    m_services.filterManager.load(
        answeredHere([this, codeIdentityKeys, applicationPaths](const auto &error) {
            statusLoaded(error, codeIdentityKeys, applicationPaths);
        }));
}

void FilterController::statusLoaded(const std::optional<PlatformError> &error,
    const std::optional<QStringList> &codeIdentityKeys, const QStringList &applicationPaths)
{
    if (error) {
        m_services.log.error(u"Failed to refresh filter status: "_s + error->description);
        setStatus(*error);
        return;
    }
    const bool enabled = m_services.filterManager.isEnabled();
    const bool stillAwaitingApproval
        = m_activationRequest && m_status == FilterStatus::Kind::AwaitingApproval;
    if (enabled)
        setStatus(FilterStatus::Kind::Enabled);
    else if (stillAwaitingApproval)
        setStatus(FilterStatus::Kind::AwaitingApproval);
    else
        setStatus(FilterStatus::Kind::Inactive);
    m_services.log.notice(
        u"Filter status refreshed: enabled="_s + (enabled ? "true"_L1 : "false"_L1));
    if (enabled && codeIdentityKeys)
        requestActivation(*codeIdentityKeys, applicationPaths);
}

void FilterController::applyRules(
    const QStringList &codeIdentityKeys, const QStringList &applicationPaths)
{
    setPendingRules(codeIdentityKeys, applicationPaths);
    startWrite(std::nullopt);
}

void FilterController::disableFilter()
{
    startWrite(false);
}

void FilterController::setStatus(const FilterStatus &status)
{
    m_status = status;
    Q_EMIT statusChanged();
}

void FilterController::setStatus(const PlatformError &error)
{
    if (isAwaitingApprovalError(error))
        setStatus(FilterStatus::Kind::AwaitingApproval);
    else
        setStatus(FilterStatus::failed(error.description));
}

void FilterController::setPendingRules(
    const QStringList &codeIdentityKeys, const QStringList &applicationPaths)
{
    m_pendingCodeIdentityKeys = normalizedCodeIdentityKeys(
        codeIdentityKeys, records::ownIdentifiers(m_services.mainBundle.identifier()));
    m_pendingApplicationPaths = normalizedApplicationPaths(applicationPaths);
}

} // namespace zorvane::filter
