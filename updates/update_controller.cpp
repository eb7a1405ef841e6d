#include "updates/update_controller.h"

#include "updates/version_comparison.h"

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace zorvane::updates
{

using platform::ManifestFetcher;
using platform::ManifestResponse;

namespace
{

constexpr std::chrono::milliseconds checkInterval = 24h;
const QString lastCheckKey = u"updates.lastCheckedAt"_s;
const QString cachedManifestKey = u"updates.cachedManifest"_s;

constexpr qsizetype longestManifest = 65536;
constexpr std::chrono::milliseconds idleTimeout = 10s;
constexpr std::chrono::milliseconds totalTimeout = 60s;

/** What a fetch brought, if it is a manifest that may be believed. */
std::optional<AppUpdate> validManifest(const ManifestFetcher::Result &result)
{
    const auto *const response = std::get_if<ManifestResponse>(&result);
    if (response == nullptr || response->status < 200 || response->status > 299
        || response->body.size() > longestManifest)
        return std::nullopt;
    auto update = decodedUpdate(response->body);
    if (!update || !allowedDownloadAddress(update->downloadURL))
        return std::nullopt;
    return update;
}

} // namespace

UpdateController::UpdateController(const Services &services, QUrl manifestURL)
    : m_services(services)
    , m_manifestURL(std::move(manifestURL))
{
    applyCachedManifest();
}

UpdateController::~UpdateController() = default;

QVariant UpdateController::availableUpdateForViews() const
{
    return m_availableUpdate ? QVariant::fromValue(*m_availableUpdate) : QVariant();
}

void UpdateController::setBannerVisible(bool visible)
{
    m_isBannerVisible = visible;
    Q_EMIT changed();
}

void UpdateController::setChecking(bool checking)
{
    m_isChecking = checking;
    Q_EMIT changed();
}

void UpdateController::setMessage(const std::optional<QString> &message)
{
    m_message = message;
    Q_EMIT changed();
}

void UpdateController::checkForUpdates(bool force, bool userInitiated)
{
    checkForUpdates(force, userInitiated, [] {});
}

void UpdateController::checkForUpdates(bool force, bool userInitiated, std::function<void()> done)
{
    if (m_isChecking || (!force && hasCheckedLately())) {
        done();
        return;
    }
    setChecking(true);
    if (userInitiated)
        setMessage(std::nullopt);
    m_services.fetcher.fetch(
        {
            .address = m_manifestURL,
            .accept = QByteArrayLiteral("application/json"),
            .longestBody = longestManifest,
            .idleTimeout = idleTimeout,
            .totalTimeout = totalTimeout,
        },
        platform::onMainThread(m_services.scheduler, m_lifetime.watch(),
            [this, userInitiated, done = std::move(done)](const ManifestFetcher::Result &result) {
                checkEnded(userInitiated, result);
                done();
            }));
}

bool UpdateController::hasCheckedLately() const
{
    const auto lastCheck = m_services.preferences.date(lastCheckKey);
    return lastCheck && lastCheck->msecsTo(m_services.scheduler.now()) < checkInterval.count();
}

void UpdateController::checkEnded(bool userInitiated, const ManifestFetcher::Result &result)
{
    if (const auto update = validManifest(result)) {
        m_services.preferences.setDate(lastCheckKey, m_services.scheduler.now());
        m_services.preferences.setData(cachedManifestKey, std::get<ManifestResponse>(result).body);
        apply(*update, userInitiated);
    } else if (userInitiated) {
        setMessage(u"Zorvane could not check for updates. "
                   "Check your internet connection and try again."_s);
    }
    setChecking(false);
}

void UpdateController::applyCachedManifest()
{
    // Believed as it stands: it was checked when it was fetched.
    const auto manifest = m_services.preferences.data(cachedManifestKey);
    if (const auto update = manifest ? decodedUpdate(*manifest) : std::nullopt)
        apply(*update, false);
}

void UpdateController::apply(const AppUpdate &update, bool userInitiated)
{
    const bool newer = isNewerThanRunning(update);
    m_availableUpdate = newer ? std::optional(update) : std::nullopt;
    Q_EMIT changed();
    setBannerVisible(newer);
    if (!userInitiated)
        return;
    setMessage(newer ? u"Zorvane %1 is available."_s.arg(update.version)
                     : u"You’re up to date. Zorvane %1 is the latest version."_s.arg(
                         m_services.mainBundle.shortVersion().value_or(QString())));
}

bool UpdateController::isNewerThanRunning(const AppUpdate &update) const
{
    const QString running = m_services.mainBundle.shortVersion().value_or(u"0"_s);
    const int order = compareNumerically(update.version, running);
    if (order != 0)
        return order > 0;
    const QString runningBuild = m_services.mainBundle.buildVersion().value_or(u"0"_s);
    return update.build && buildNumber(runningBuild) < *update.build;
}

void UpdateController::openDownload()
{
    if (m_availableUpdate)
        m_services.actions.openUrl(QUrl(m_availableUpdate->downloadURL, QUrl::TolerantMode));
}

QString UpdateController::currentVersionText() const
{
    QString text = m_services.mainBundle.shortVersion().value_or(u"Unknown"_s);
    if (const auto build = m_services.mainBundle.buildVersion())
        text += u" ("_s + *build + u')';
    return text;
}

} // namespace zorvane::updates
