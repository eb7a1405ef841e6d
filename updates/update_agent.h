#pragma once

#include "platform/main_thread.h"
#include "platform/platform.h"
#include "updates/update_controller.h"
#include "updates/update_notification_controller.h"

#include <functional>
#include <memory>

namespace zorvane::updates
{

/**
 * The unattended check: looks for a newer release, at most once a day, announces it, and stays for
 * as long as its announcement needs it, though not for ever. Main thread.
 */
class UpdateAgent
{
public:
    /** @p platform outlives this. */
    explicit UpdateAgent(platform::Platform &platform, const QUrl &manifestURL = manifestAddress());
    ~UpdateAgent();

    /** Starts the one check; @p ended is called once, in a later turn of the main loop, when there
     * is nothing left to do. */
    void run(std::function<void()> ended);

private:
    void announce();
    void stayForResponse();
    void end();

    platform::Platform &m_platform;
    UpdateController m_updates;
    std::shared_ptr<UpdateNotificationController> m_notifications;
    std::function<void()> m_ended;
    platform::Lifetime m_lifetime;
};

} // namespace zorvane::updates
