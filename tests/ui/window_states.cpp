#include "ui/window_states.h"

#include "ui/observed.h"

#include <algorithm>
#include <QQmlProperty>
#include <QTest>

using namespace Qt::StringLiterals;

namespace zorvane::tests::states
{

namespace
{

Window made(const QList<SampleApplication> &applications = {}, bool firstLaunch = false)
{
    return std::make_unique<WindowFixture>(applications, firstLaunch);
}

void waitFor(const std::function<bool()> &condition, const char *what)
{
    if (!QTest::qWaitFor(condition))
        qFatal("waited for %s", what);
}

void waitForPanel(const Window &window, const QString &name)
{
    waitFor([&] { return window->waitUntilGrown(name); }, qUtf8Printable(name));
}

void waitForBox(const Window &window, const QString &name)
{
    waitFor(
        [&] {
            const auto *const box = window->item(name);
            return box != nullptr && box->opacity() >= 1;
        },
        qUtf8Printable(name));
}

/** Whether all of it that changes little by little has done so. */
bool isAtRest(const QQuickItem &item)
{
    const auto &children = item.children();
    return std::ranges::all_of(children, [](const QObject *child) {
        const auto wanted = child->property("targetValue");
        return !wanted.isValid()
            || child->property("targetProperty").value<QQmlProperty>().read() == wanted;
    });
}

/** The window after @p change, once @p panel shows it. */
Window after(const std::function<void(WindowFixture &)> &change, const QString &panel = {})
{
    auto window = made();
    change(*window);
    if (!panel.isEmpty())
        waitForPanel(window, panel);
    const auto isMoving = [](const QQuickItem *item) { return !isAtRest(*item); };
    waitFor([&] { return window->items(isMoving).isEmpty(); }, "rest");
    return window;
}

/** Above the panel that shows already. */
void offerUpdate(const Window &window)
{
    window->checkForUpdates(u"1.3"_s);
    waitForPanel(window, u"updatePanel"_s);
}

void openSettings(WindowFixture &window)
{
    window.platform.mainBundle.version = u"1.2"_s;
    window.platform.mainBundle.build = u"7"_s;
    window.openSettings();
}

} // namespace

Window empty()
{
    return made();
}

Window listed()
{
    auto window = made({{u"Atlas"_s, u"org.example.atlas"_s, u"TEAM123456"_s, std::nullopt}});
    records::BlockedApplication quill;
    quill.id = QUuid::createUuid();
    quill.name = u"Quill"_s;
    quill.bundleIdentifier = quill.signingIdentifier = u"org.example.quill"_s;
    quill.inspectionVersion = records::currentInspectionVersion;
    quill.path = u"/Applications/Quill.app"_s;
    quill.auxiliaryCodeIdentities = {{u"org.example.quill.courier"_s, u"TEAM123456"_s}};
    window->store->add(quill);
    window->settle();
    auto &platform = window->platform;
    observe(platform, {observedProcess(platform, u"Quill"_s, u"Quill Updater"_s, std::nullopt)});
    const auto disclosures
        = window->items([](const QQuickItem *item) { return item->objectName() == u"disclosure"; });
    window->click(disclosures.last());
    waitFor(
        [&] {
            const auto *const lines = window->item(u"componentLines"_s);
            return lines != nullptr && lines->property("unfolding").toReal() >= 1;
        },
        "the lines");
    window->settle();
    return window;
}

Window enabled()
{
    return after(&WindowFixture::enable);
}

Window activating()
{
    return after(&WindowFixture::activate);
}

Window failed()
{
    const auto fail = [](WindowFixture &window) {
        window.fail(u"Restart your Mac to finish installing the extension."_s);
    };
    return after(fail, u"failureLabel"_s);
}

Window updated()
{
    const auto update = [](WindowFixture &window) { window.checkForUpdates(u"1.3"_s); };
    return after(update, u"updatePanel"_s);
}

Window installationRequired()
{
    return after(&WindowFixture::requireInstallation, u"installationPanel"_s);
}

Window installationRequiredAndUpdated()
{
    auto window = installationRequired();
    offerUpdate(window);
    return window;
}

Window awaitingApproval()
{
    return after(&WindowFixture::awaitApproval, u"approvalPanel"_s);
}

Window awaitingApprovalAndUpdated()
{
    auto window = awaitingApproval();
    offerUpdate(window);
    return window;
}

Window dropHovering()
{
    auto window = made();
    window->store->setDropTargeted(true);
    const auto *const zone = window->item(u"dropZone"_s);
    waitFor([&] { return zone->property("highlight").toReal() >= 1 && zone->scale() >= 1.01; },
        "the highlight");
    return window;
}

Window adding()
{
    auto window = made();
    window->store->addApplication(QUrl::fromLocalFile(u"/Users/someone/Quill.app"_s));
    return window;
}

Window alerted()
{
    auto window = made();
    window->store->addApplication(QUrl::fromLocalFile(u"/Users/someone/notes.txt"_s));
    window->settle();
    waitForBox(window, u"alertBox"_s);
    return window;
}

Window guide(int page)
{
    auto window = made({}, true);
    window->ui->onboarding().close();
    window->requireInstallation();
    window->ui->onboarding().show();
    waitForBox(window, u"onboarding"_s);
    for (int at = 0; at < page; ++at)
        window->click(window->button(u"Continue"_s));
    const auto named = [&](const QString &name) {
        return window->items([&](const QQuickItem *item) { return item->objectName() == name; });
    };
    waitFor(
        [&] {
            const auto messages = named(u"onboardingMessage"_s);
            return messages.size() == 1 && messages.first()->parentItem()->scale() >= 1
                && named(u"pageMark"_s).value(page)->width() >= 22;
        },
        "the page");
    return window;
}

Window menu()
{
    auto window = made();
    window->click(window->item(u"menuTitle"_s));
    return window;
}

Window settings()
{
    return after([](WindowFixture &window) {
        openSettings(window);
        window.checkForUpdates(u"1.2"_s);
    });
}

Window settingsWithUpdate()
{
    const auto update = [](WindowFixture &window) {
        openSettings(window);
        window.checkForUpdates(u"1.3"_s);
    };
    return after(update, u"availableUpdate"_s);
}

Window settingsMisplaced()
{
    return after([](WindowFixture &window) {
        window.requireInstallation();
        openSettings(window);
    });
}

} // namespace zorvane::tests::states
