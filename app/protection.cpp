#include "app/protection.h"

#include "app/rule_lists.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::app
{

using filter::FilterStatus;

namespace
{

// Absent until the user, or the first known status, has decided.
const QString protectionRequestedKey = u"protectionRequested"_s;

} // namespace

Protection::Protection(
    std::shared_ptr<filter::FilterController> filterController, const Services &services)
    : m_filterController(std::move(filterController))
    , m_services(services)
{
    connect(m_filterController.get(), &filter::FilterController::statusChanged, this,
        &Protection::statusAnnounced);
}

bool Protection::isEnabled() const
{
    return m_filterController->status() == FilterStatus::Kind::Enabled;
}

void Protection::setEnabled(bool on)
{
    m_services.preferences.setBoolean(protectionRequestedKey, on);
    // An empty list must not go over the rules that are stored; listLoaded() makes up for it.
    if (!m_services.list.hasLoaded()) {
        m_wishWaitsForList = true;
        return;
    }
    if (on)
        m_filterController->requestActivation(codeIdentityKeys(), applicationPaths());
    else
        m_filterController->disableFilter();
}

std::optional<QString> Protection::explanationWhyUnavailable() const
{
    if (m_filterController->status() != FilterStatus::Kind::InstallationRequired)
        return std::nullopt;
    return u"Move Zorvane to your Mac's Applications folder, quit this copy, and open it again "
           "from Applications before turning on protection."_s;
}

void Protection::refresh()
{
    if (m_services.list.hasLoaded()
        && m_filterController->status() == FilterStatus::Kind::AwaitingApproval)
        m_filterController->requestActivation(codeIdentityKeys(), applicationPaths());
    else
        m_filterController->refreshStatus();
}

void Protection::listLoaded()
{
    m_filterController->refreshStatus(codeIdentityKeys(), applicationPaths());
    if (std::exchange(m_wishWaitsForList, false))
        reconcile();
}

void Protection::applyRules()
{
    m_filterController->applyRules(codeIdentityKeys(), applicationPaths());
}

void Protection::applyRulesIfEnabled()
{
    if (isEnabled())
        applyRules();
}

QStringList Protection::codeIdentityKeys() const
{
    return blockedCodeIdentityKeys(
        m_services.list.applications(), m_services.mainBundle.identifier());
}

QStringList Protection::applicationPaths() const
{
    return blockedApplicationPaths(m_services.list.applications());
}

void Protection::statusAnnounced()
{
    if (m_services.preferences.contains(protectionRequestedKey))
        return;
    // Earlier versions kept no wish: what the filter does now is taken for it, once.
    const auto wish = wishFromStatus();
    if (!wish)
        return;
    m_services.preferences.setBoolean(protectionRequestedKey, *wish);
    reconcile();
}

std::optional<bool> Protection::wishFromStatus() const
{
    switch (m_filterController->status().kind()) {
    case FilterStatus::Kind::Enabled:
        return true;
    case FilterStatus::Kind::Inactive:
        // Before the load the list only looks empty; the status is announced again after it.
        if (!m_services.list.hasLoaded())
            return std::nullopt;
        return !m_services.list.applications().isEmpty();
    case FilterStatus::Kind::Failed:
    case FilterStatus::Kind::InstallationRequired:
    case FilterStatus::Kind::Activating:
    case FilterStatus::Kind::AwaitingApproval:
        return std::nullopt;
    }
    return std::nullopt;
}

void Protection::reconcile()
{
    if (!m_services.list.hasLoaded() || !m_services.preferences.contains(protectionRequestedKey))
        return;
    if (!m_services.preferences.boolean(protectionRequestedKey))
        m_filterController->disableFilter();
    else if (isEnabled())
        applyRules();
    else
        m_filterController->requestActivation(codeIdentityKeys(), applicationPaths());
}

} // namespace zorvane::app
