#pragma once

#include "desktop_bus/notification_screen.h"
#include "desktop_bus/private_bus.h"
#include "fakes/fake_scheduler.h"
#include "platform/simulated/desktop_notifications.h"
#include "state_folder.h"

#include <memory>
#include <QDBusPendingCall>
#include <QJsonDocument>
#include <QJsonObject>

namespace zorvane::tests
{

inline const QString notificationIdentifier = QStringLiteral("zorvane-update-available");
inline const QString notificationsFile = QStringLiteral("notifications.json");

/** Keeps the responses that it hears of. */
class NotificationListener final : public platform::NotificationDelegate
{
public:
    void didReceive(
        const platform::NotificationResponse &response, std::function<void()> done) override
    {
        responses.append(response);
        acknowledge = std::move(done);
        if (acknowledges)
            acknowledge();
    }

    QList<platform::NotificationResponse> responses;
    std::function<void()> acknowledge;
    bool acknowledges = true;
};

/** One program of the product: the application or the agent. */
struct NotifyingProgram {
    NotifyingProgram(const PrivateBus &bus, const StateFolder &folder)
        : member(bus)
        , notifications(std::make_unique<platform::simulated::DesktopNotifications>(
              std::make_shared<platform::simulated::SessionBus>(
                  scheduler, [this] { return member.connection(); }),
              folder.path() / notificationsFile.toStdString(), scheduler, pause))
    {
        pass(pause);
        notifications->setDelegate(listener);
        notifications->setCategories({{QStringLiteral("ZORVANE_UPDATE"),
            {{QStringLiteral("DOWNLOAD_UPDATE"), QStringLiteral("Download Update"), true}}}});
    }

    void add(const platform::NotificationRequest &request)
    {
        notifications->add(request, [this](const auto &error) { accepted = !error; });
    }

    /** Lets time pass here, and everything be done that is due. */
    void pass(std::chrono::milliseconds time)
    {
        scheduler.settle();
        scheduler.advance(time);
        scheduler.settle();
    }

    static constexpr std::chrono::milliseconds pause{500};

    BusMember member;
    FakeScheduler scheduler;
    std::shared_ptr<NotificationListener> listener = std::make_shared<NotificationListener>();
    bool accepted = false;
    std::unique_ptr<platform::simulated::DesktopNotifications> notifications;
};

inline platform::NotificationRequest sampleRequest()
{
    return {
        .identifier = notificationIdentifier,
        .title = QStringLiteral("Zorvane 2.1 is available"),
        .body = QStringLiteral("Faster & <b>better</b>."),
        .hasDefaultSound = true,
        .categoryIdentifier = QStringLiteral("ZORVANE_UPDATE"),
        .userInfo = {{QStringLiteral("downloadURL"), QStringLiteral("https://kestrelworks.dev/d")}},
        .delay = std::chrono::seconds(5),
    };
}

/** A screen and the agent on a bus of their own; all but the bus are new for each test. */
class NotificationFixture
{
public:
    void restart()
    {
        agent.reset();
        screen.reset();
        folder = std::make_unique<StateFolder>();
        screen = std::make_unique<NotificationScreen>(bus, 7);
        restartAgent();
    }

    /** The next run of the agent's program. */
    void restartAgent() { agent = std::make_unique<NotifyingProgram>(bus, *folder); }

    /** Lets a request of the agent come to the screen. */
    void post(const platform::NotificationRequest &request)
    {
        const auto before = screen->calls.size();
        agent->add(request);
        agent->pass(request.delay);
        QTRY_COMPARE(screen->calls.size(), before + 1);
        QTRY_VERIFY(remembered().value(QStringLiteral("number")).toInteger() > 0);
    }

    /** What the shared file says of the notification. */
    [[nodiscard]] QJsonObject remembered() const
    {
        return QJsonDocument::fromJson(folder->read(notificationsFile))
            .object()
            .value(notificationIdentifier)
            .toObject();
    }

    /** True once the agent is no longer needed; looks at it once now. */
    std::shared_ptr<bool> watchNeed()
    {
        auto notNeeded = std::make_shared<bool>(false);
        agent->notifications->whenNotNeeded([notNeeded] { *notNeeded = true; });
        agent->scheduler.settle();
        return notNeeded;
    }

    /** Lets everything arrive that is on its way: answers come in order. */
    void settleBus()
    {
        BusMember probe(bus);
        const auto question
            = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                QStringLiteral("/org/freedesktop/Notifications"),
                QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("GetCapabilities"));
        for (int i = 0; i < 3; ++i) {
            const QDBusPendingCall call = probe.connection().asyncCall(question);
            QTRY_VERIFY(call.isFinished());
        }
    }

    const PrivateBus bus;
    std::unique_ptr<StateFolder> folder;
    std::unique_ptr<NotificationScreen> screen;
    std::unique_ptr<NotifyingProgram> agent;
};

} // namespace zorvane::tests
