// The controller's half that gets the filter extension activated.

#include "filter/filter_controller.h"

#include "app/records/collation.h"
#include "app/records/paths.h"

#include <filesystem>

using namespace Qt::StringLiterals;

namespace zorvane::filter
{

using platform::ActivationResult;
using platform::PlatformError;

bool FilterController::isRunningFromApplicationsFolder() const
{
    const std::filesystem::path location = m_services.mainBundle.location();
    // Keeps what does not exist, unlike a strict resolution.
    std::error_code ignored;
    const auto resolved = std::filesystem::weakly_canonical(location, ignored);
    const QString path = QString::fromStdString((ignored ? location : resolved).string());
    return records::standardizedPath(path).startsWith("/Applications/"_L1);
}

QString FilterController::extensionBundleIdentifier() const
{
    return m_services.mainBundle.identifier().value_or(u"com.example.Zorvane"_s)
        + ".FilterExtension"_L1;
}

void FilterController::requestActivation(
    const QStringList &codeIdentityKeys, const QStringList &applicationPaths)
{
    // First and in every case, so that the newest rules are the ones written in the end.
    setPendingRules(codeIdentityKeys, applicationPaths);
    if (!isRunningFromApplicationsFolder()) {
        setStatus(FilterStatus::Kind::InstallationRequired);
        m_services.log.notice(u"Activation deferred until Zorvane is opened from /Applications"_s);
        return;
    }
    if (m_activationRequest) {
        m_services.log.notice(u"Activation request already pending; updated pending rules"_s);
        return;
    }
    setStatus(FilterStatus::Kind::Activating);
    const QString extension = extensionBundleIdentifier();
    m_services.log.notice(u"Submitting activation request for "_s + extension);
    m_activationRequest = m_services.systemExtensions.submitActivation(extension, weak_from_this());
}

platform::ReplacementAction FilterController::actionForReplacingExtension()
{
    // Whatever the versions are: the extension has to match the program that runs.
    return platform::ReplacementAction::Replace;
}

void FilterController::requestNeedsUserApproval()
{
    answeredHere([this] { approvalNeeded(); })();
}

void FilterController::requestDidFinish(ActivationResult result)
{
    answeredHere([this](ActivationResult value) { activationFinished(value); })(result);
}

void FilterController::requestDidFail(const PlatformError &error)
{
    answeredHere([this](const PlatformError &value) { activationFailed(value); })(error);
}

void FilterController::approvalNeeded()
{
    // The request stays outstanding: the same one finishes or fails later.
    m_services.log.notice(u"System extension activation requires user approval"_s);
    setStatus(FilterStatus::Kind::AwaitingApproval);
}

void FilterController::activationFinished(ActivationResult result)
{
    m_activationRequest.reset();
    m_services.log.notice(u"System extension activation finished"_s);
    switch (result) {
    case ActivationResult::Completed:
        startWrite(true);
        return;
    case ActivationResult::WillCompleteAfterReboot:
        setStatus(FilterStatus::failed(u"Restart your Mac to finish installing the extension."_s));
        return;
    }
    setStatus(
        FilterStatus::failed(u"The extension installation finished with an unknown result."_s));
}

void FilterController::activationFailed(const PlatformError &error)
{
    m_activationRequest.reset();
    m_services.log.error(u"System extension activation failed: "_s + error.description);
    if (!isRunningFromApplicationsFolder()
        || records::containsIgnoringCase(error.description, u"/Applications"_s)) {
        setStatus(FilterStatus::Kind::InstallationRequired);
        return;
    }
    setStatus(error);
}

} // namespace zorvane::filter
