#include "updates/update_agent.h"

#include <utility>

using namespace std::chrono_literals;

namespace zorvane::updates
{

namespace
{

// As long as an announcement may wait for its response here.
constexpr auto longestStay = 10min;

} // namespace

UpdateAgent::UpdateAgent(platform::Platform &platform, const QUrl &manifestURL)
    : m_platform(platform)
    , m_updates({*platform.scheduler, *platform.preferences, *platform.mainBundle,
                    *platform.manifestFetcher, *platform.actions},
          manifestURL)
    , m_notifications(std::make_shared<UpdateNotificationController>(
          UpdateNotificationController::Services{*platform.scheduler, *platform.preferences,
              *platform.notifications, *platform.actions}))
{
}

UpdateAgent::~UpdateAgent() = default;

void UpdateAgent::run(std::function<void()> ended)
{
    m_ended = std::move(ended);
    m_notifications->registerCategories();
    m_updates.checkForUpdates(false, false, [this] { announce(); });
}

void UpdateAgent::announce()
{
    // A failure needs no telling: the next check announces the release again.
    m_notifications->notifyUpdateAvailability(
        m_updates.availableUpdate(), [this](const auto &) { stayForResponse(); });
}

void UpdateAgent::stayForResponse()
{
    const auto end = platform::onMainThread(
        *m_platform.scheduler, m_lifetime.watch(), [this] { this->end(); });
    m_platform.notifications->whenNotNeeded(end);
    m_platform.scheduler->after(longestStay, end);
}

void UpdateAgent::end()
{
    if (const auto ended = std::exchange(m_ended, nullptr))
        ended();
}

} // namespace zorvane::updates
