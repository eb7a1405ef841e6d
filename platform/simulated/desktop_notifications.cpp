#include "platform/simulated/desktop_notifications.h"

#include "platform/simulated/report.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace zorvane::platform::simulated
{

namespace
{

/** What the service calls a click on the notification itself. */
const QString defaultAction = u"default"_s;

const char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

} // namespace

DesktopNotifications::DesktopNotifications(std::shared_ptr<SessionBus> bus,
    std::filesystem::path file, Scheduler &scheduler, std::chrono::milliseconds pause)
    : m_scheduler(scheduler)
    , m_bus(std::move(bus))
    , m_posted(std::move(file))
{
    m_scheduler.after(
        pause, onMainThread(m_scheduler, m_lifetime.watch(), [this] { connectToDesktop(); }));
}

void DesktopNotifications::connectToDesktop()
{
    if (!std::exchange(m_isConnecting, true))
        m_bus->whenConnected(
            m_lifetime.watch(), [this](const QDBusConnection &connection) { begin(connection); });
}

void DesktopNotifications::begin(const QDBusConnection &bus)
{
    m_service = std::make_unique<NotificationService>(bus);
    const auto listen = [this](auto signal, auto receive) {
        QObject::connect(m_service.get(), signal, m_service.get(), receive);
    };
    listen(&NotificationService::ActionInvoked,
        [this](uint number, const QString &key) { actionInvoked(number, key); });
    listen(&NotificationService::NotificationClosed, [this](uint number) { closed(number); });
    listen(&NotificationService::ActivationToken, [this](uint number, const QString &token) {
        m_activationToken = {number, token};
    });
    listen(&NotificationService::changed, [this] { serviceChanged(); });
    for (const auto &use : std::exchange(m_waiting, {}))
        use(*m_service);
    endIfNotNeeded();
}

void DesktopNotifications::withService(std::function<void(NotificationService &)> use)
{
    if (m_service) {
        use(*m_service);
        return;
    }
    m_waiting.append(std::move(use));
    connectToDesktop();
}

DesktopNotifications::~DesktopNotifications() = default;

void DesktopNotifications::setDelegate(std::weak_ptr<NotificationDelegate> delegate)
{
    m_delegate = std::move(delegate);
}

void DesktopNotifications::setCategories(const QList<NotificationCategory> &categories)
{
    m_categories = categories;
}

void DesktopNotifications::authorization(std::function<void(NotificationAuthorization)> done)
{
    withService([done = std::move(done)](NotificationService &service) {
        service.capabilities([done](const auto &capabilities) {
            done(capabilities ? NotificationAuthorization::Authorized
                              : NotificationAuthorization::Denied);
        });
    });
}

void DesktopNotifications::requestAuthorization(
    std::function<void(bool, const std::optional<PlatformError> &)> done)
{
    authorization([done = std::move(done)](NotificationAuthorization state) {
        done(state == NotificationAuthorization::Authorized, std::nullopt);
    });
}

void DesktopNotifications::add(const NotificationRequest &request,
    std::function<void(const std::optional<PlatformError> &)> done)
{
    const quint64 generation = ++m_generation;
    m_pending.insert(request.identifier, {request, generation});
    m_scheduler.after(request.delay,
        onMainThread(m_scheduler, m_lifetime.watch(),
            [this, identifier = request.identifier, generation] { show(identifier, generation); }));
    onMainThread(
        m_scheduler, m_lifetime.watch(), [done = std::move(done)] { done(std::nullopt); })();
}

void DesktopNotifications::removePending(const QStringList &identifiers)
{
    for (const QString &identifier : identifiers)
        m_pending.remove(identifier);
    endIfNotNeeded();
}

void DesktopNotifications::removeDelivered(const QStringList &identifiers)
{
    withService([this, identifiers](auto &) {
        for (const QString &identifier : identifiers)
            takeBack(identifier);
        endIfNotNeeded();
    });
}

void DesktopNotifications::takeBack(const QString &identifier)
{
    // The file may be lost; what this program has posted itself is taken back all the same.
    const auto ownOne = own(identifier);
    const auto notification = ownOne ? ownOne : m_posted.byIdentifier(identifier);
    if (!notification || (!m_posted.take(*notification) && !ownOne))
        return;
    if (notification->by == m_service->identity())
        m_service->close(notification->number);
    m_own.remove(notification->number);
}

void DesktopNotifications::whenNotNeeded(std::function<void()> done)
{
    m_notNeeded = std::move(done);
    onMainThread(m_scheduler, m_lifetime.watch(), [this] { endIfNotNeeded(); })();
}

void DesktopNotifications::endIfNotNeeded()
{
    if (m_notNeeded && m_waiting.isEmpty() && m_pending.isEmpty() && m_own.isEmpty()
        && m_responsesUnderWay == 0)
        std::exchange(m_notNeeded, nullptr)();
}

const NotificationRequest *DesktopNotifications::pending(
    const QString &identifier, quint64 generation) const
{
    const auto found = m_pending.constFind(identifier);
    const bool isWanted = found != m_pending.cend() && found->generation == generation;
    return isWanted ? &found->request : nullptr;
}

void DesktopNotifications::show(const QString &identifier, quint64 generation)
{
    if (pending(identifier, generation) == nullptr)
        return;
    withService([this, identifier, generation](NotificationService &service) {
        service.capabilities([this, identifier, generation](const auto &capabilities) {
            notify(identifier, generation, capabilities.value_or(QStringList()));
        });
    });
}

void DesktopNotifications::notify(
    const QString &identifier, quint64 generation, const QStringList &serviceCapabilities)
{
    const auto *const request = pending(identifier, generation);
    if (request == nullptr)
        return;
    const DesktopNotification notification = rendered(*request, serviceCapabilities);
    const bool canBeAnswered = !notification.actions.isEmpty();
    m_service->notify(
        notification, [this, identifier, generation, canBeAnswered](const auto &result) {
            shown(identifier, generation, result, canBeAnswered);
        });
}

void DesktopNotifications::shown(const QString &identifier, quint64 generation,
    const std::optional<Shown> &shown, bool canBeAnswered)
{
    const auto *const request = pending(identifier, generation);
    if (!shown) {
        qCWarning(simulatedSystem) << "The desktop did not show the notification" << identifier;
    } else if (request == nullptr) {
        m_service->close(shown->number); // removed just now
    } else {
        const PostedNotification notification{identifier, shown->number, shown->by,
            m_service->ownName(), request->categoryIdentifier, request->userInfo};
        // A service that gave up its place while it answered tells of no click any more.
        if (canBeAnswered && notification.by == m_service->identity())
            m_own.insert(notification.number, notification);
        m_posted.keep(notification);
    }
    if (request != nullptr)
        m_pending.remove(identifier);
    endIfNotNeeded();
}

DesktopNotification DesktopNotifications::rendered(
    const NotificationRequest &request, const QStringList &serviceCapabilities) const
{
    DesktopNotification result{
        .replaces = numberToReplace(request.identifier),
        .summary = request.title,
        // The text is anybody's: where the service reads markup, none of it may be read as such.
        .body = serviceCapabilities.contains("body-markup"_L1) ? request.body.toHtmlEscaped()
                                                               : request.body,
        .actions = {},
        .hints = {{u"desktop-entry"_s, u"dev.kestrelworks.Zorvane"_s}},
    };
    if (request.hasDefaultSound)
        result.hints.insert(u"sound-name"_s, u"message-new-instant"_s);
    if (!serviceCapabilities.contains("actions"_L1))
        return result;
    result.actions = {defaultAction, request.title};
    const auto category = std::ranges::find(
        m_categories, request.categoryIdentifier, &NotificationCategory::identifier);
    if (category != m_categories.cend()) {
        for (const NotificationAction &action : category->actions)
            result.actions += {action.identifier, action.title};
    }
    return result;
}

uint DesktopNotifications::numberToReplace(const QString &identifier) const
{
    const auto earlier = m_posted.byIdentifier(identifier);
    return earlier && earlier->by == m_service->identity() ? earlier->number : 0;
}

std::optional<PostedNotification> DesktopNotifications::ours(uint number) const
{
    const NotificationServiceIdentity service = m_service->identity();
    if (const auto own = m_own.constFind(number); own != m_own.cend() && own->by == service)
        return *own;
    auto notification = m_posted.byNumber(number, service);
    if (notification && m_service->isPresent(notification->poster))
        return std::nullopt;
    return notification;
}

std::optional<PostedNotification> DesktopNotifications::own(const QString &identifier) const
{
    const auto found = std::ranges::find(m_own, identifier, &PostedNotification::identifier);
    return found == m_own.cend() ? std::nullopt : std::optional(*found);
}

void DesktopNotifications::actionInvoked(uint number, const QString &key)
{
    const auto notification = ours(number);
    const bool isOwn = m_own.remove(number);
    // The file may be lost; what this program has posted itself is answered all the same.
    if (notification && (m_posted.take(*notification) || isOwn))
        respond(*notification, key);
}

void DesktopNotifications::respond(const PostedNotification &notification, const QString &key)
{
    m_service->close(notification.number); // some services would leave it on the screen
    if (m_activationToken.first == notification.number && !m_activationToken.second.isEmpty())
        qputenv(tokenVariable, std::exchange(m_activationToken.second, {}).toUtf8());
    const auto delegate = m_delegate.lock();
    if (!delegate)
        return;
    ++m_responsesUnderWay;
    delegate->didReceive({.actionIdentifier = key == defaultAction ? QString() : key,
                             .categoryIdentifier = notification.categoryIdentifier,
                             .userInfo = notification.userInfo},
        onMainThread(m_scheduler, m_lifetime.watch(), [this] {
            --m_responsesUnderWay;
            endIfNotNeeded();
        }));
}

void DesktopNotifications::closed(uint number)
{
    if (const auto notification = ours(number))
        m_posted.take(*notification);
    m_own.remove(number);
    endIfNotNeeded();
}

void DesktopNotifications::serviceChanged()
{
    m_own.clear();
    endIfNotNeeded();
}

} // namespace zorvane::platform::simulated
