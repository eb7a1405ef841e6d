#include "ui/window_fixture.h"

#include "app/records/blocked_application_json.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

void collect(QQuickItem *parent, const std::function<bool(const QQuickItem *)> &wanted,
    QList<QQuickItem *> &found)
{
    for (auto *const child : parent->childItems()) {
        if (!child->isVisible())
            continue;
        if (wanted(child))
            found.append(child);
        collect(child, wanted, found);
    }
}

QQuickItem *only(const QList<QQuickItem *> &items)
{
    return items.value(0, nullptr);
}

} // namespace

QByteArray storedList(const QList<SampleApplication> &applications)
{
    QList<records::BlockedApplication> records;
    for (const auto &[name, identifier, team, icon] : applications) {
        records::BlockedApplication record;
        record.id = QUuid::createUuidV5(QUuid(), identifier);
        record.name = name;
        record.bundleIdentifier = identifier;
        record.signingIdentifier = identifier;
        record.teamIdentifier = team;
        record.inspectionVersion = records::currentInspectionVersion;
        record.path = u"/Applications/%1.app"_s.arg(name);
        record.iconData = icon;
        records.append(record);
    }
    return records::encodedApplications(records);
}

QRectF inWindow(const QQuickItem *item)
{
    return item->mapRectToScene(QRectF(QPointF(), item->size()));
}

QString accessibleName(const QQuickItem *item)
{
    auto *const told = QAccessible::queryAccessibleInterface(const_cast<QQuickItem *>(item));
    return told == nullptr ? QString() : told->text(QAccessible::Name);
}

QAccessible::Role accessibleRole(const QQuickItem *item)
{
    auto *const told = QAccessible::queryAccessibleInterface(const_cast<QQuickItem *>(item));
    return told == nullptr ? QAccessible::NoRole : told->role();
}

void doAccessibleAction(QQuickItem *item, const QString &action)
{
    auto *const told = QAccessible::queryAccessibleInterface(item);
    if (told != nullptr && told->actionInterface() != nullptr)
        told->actionInterface()->doAction(action);
}

WindowFixture::WindowFixture(const QList<SampleApplication> &applications, bool firstLaunch,
    const ui::DesktopConventions &conventions, ListRead listRead)
{
    // What the engine says about our QML is a fault in it.
    QTest::failOnWarning(QRegularExpression(u"\\.qml:"_s));
    if (!firstLaunch)
        platform.preferences.values.insert(u"hasCompletedOnboarding"_s, true);
    if (!applications.isEmpty())
        platform.preferences.values.insert(u"blockedApplications"_s, storedList(applications));
    store = std::make_unique<app::AppBlockStore>(platform.ports);
    if (listRead == ListRead::WhenTold)
        m_heldBack = platform.scheduler.takeBackgroundJob(0);
    ui = std::make_unique<ui::UserInterface>(*store, platform.ports, conventions);
    m_window = ui->window();
    settle();
    ui->show();
    if (!QTest::qWaitForWindowExposed(ui->window()))
        qFatal("the main window did not show");
}

void WindowFixture::readList()
{
    m_heldBack();
    settle();
}

void WindowFixture::settle()
{
    platform.scheduler.settle();
    QCoreApplication::processEvents();
    takePlaces();
}

/** What shows is built, and columns are stacked, for a frame. */
void WindowFixture::takePlaces() const
{
    if (window()->isExposed())
        window()->grabWindow();
}

void WindowFixture::enable()
{
    platform.filterManager.stored.enabled = true;
    store->refreshProtection();
    settle();
}

void WindowFixture::requireInstallation()
{
    platform.mainBundle.path = "/Users/someone/Downloads/Zorvane.app";
    store->refreshProtection();
    settle();
}

void WindowFixture::activate()
{
    store->setProtectionEnabled(true);
    settle();
}

void WindowFixture::awaitApproval()
{
    activate();
    platform.systemExtensions.delegate()->requestNeedsUserApproval();
    settle();
}

void WindowFixture::fail(const QString &message)
{
    activate();
    platform.systemExtensions.delegate()->requestDidFail({u"Test"_s, 1, message});
    settle();
}

void WindowFixture::raiseAlert()
{
    store->addApplication(QUrl::fromLocalFile(u"/Users/someone/Unsigned.app"_s));
    settle();
}

void WindowFixture::publish(const QString &version, const QString &releaseNotes)
{
    QJsonObject manifest{
        {u"version"_s, version}, {u"downloadURL"_s, u"https://kestrelworks.dev/d"_s}};
    if (!releaseNotes.isEmpty())
        manifest.insert(u"releaseNotes"_s, releaseNotes);
    platform.manifestFetcher.answers
        = {platform::ManifestResponse{200, QJsonDocument(manifest).toJson()}};
}

void WindowFixture::checkForUpdates(const QString &version, const QString &releaseNotes)
{
    publish(version, releaseNotes);
    store->checkForUpdates(true);
    settle();
}

void WindowFixture::openSettings()
{
    if (!QTest::qWaitForWindowActive(window()))
        qFatal("the main window is not active");
    QTest::keyClick(window(), Qt::Key_Comma, Qt::ControlModifier);
    auto *const settings = ui->otherWindows().settings();
    if (settings == nullptr || !QTest::qWaitForWindowActive(settings))
        qFatal("the settings did not open");
    turnTo(settings);
}

QQuickItem *WindowFixture::item(const QString &name) const
{
    return only(items([&](const QQuickItem *item) { return item->objectName() == name; }));
}

QQuickItem *WindowFixture::text(const QString &text) const
{
    return only(items([&](const QQuickItem *item) {
        return item->inherits("QQuickText") && item->property("text").toString() == text;
    }));
}

QQuickItem *WindowFixture::button(const QString &label) const
{
    return only(items([&](const QQuickItem *item) {
        return item->metaObject()->indexOfSignal("clicked()") >= 0
            && (item->property("text") == label || item->property("toolTip") == label);
    }));
}

QList<QQuickItem *> WindowFixture::items(
    const std::function<bool(const QQuickItem *)> &wanted) const
{
    QList<QQuickItem *> found;
    collect(window()->contentItem(), wanted, found);
    return found;
}

bool WindowFixture::waitUntilGrown(const QString &name) const
{
    const bool hasGrown = QTest::qWaitFor([&] {
        const auto *const grown = item(name);
        return grown != nullptr && grown->property("progress").toReal() >= 1;
    });
    takePlaces();
    return hasGrown;
}

void WindowFixture::click(QQuickItem *item) const
{
    const auto centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(window(), Qt::LeftButton, {}, centre.toPoint());
}

} // namespace zorvane::tests
