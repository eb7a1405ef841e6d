#include "ui/appearance.h"
#include "ui/samples.h"

#include <QColor>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

QColor colour(const QQuickItem *item)
{
    return item->property("color").value<QColor>();
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theHeaderShowsTheIconOfTheProduct()
    {
        const WindowFixture fixture;
        const auto *const icon = fixture.item(u"ownIcon"_s);
        const QImage picture = fixture.window()->grabWindow();
        const auto colorAt = [&](QPointF place) {
            const QPointF pixel = icon->mapToScene(place) * picture.devicePixelRatio();
            return picture.pixelColor(pixel.toPoint());
        };
        const QPointF middle(icon->width() / 2, icon->height() / 2);
        QVERIFY(colorAt(middle) != colorAt({-5, middle.y()}));
    }

    void theDesktopGetsAPictureOfTheProgram()
    {
        const WindowFixture fixture;
        QTRY_VERIFY(!QGuiApplication::windowIcon().isNull());
    }

    void aListShowsItsRowsInOrderAndTheirNumber()
    {
        const WindowFixture fixture({atlas, quill});
        QCOMPARE(fixture.item(u"countBadge"_s)->property("count").toInt(), 2);
        QCOMPARE(fixture.text(u"No blocked apps"_s), nullptr);
        const auto names = fixture.items(
            [](const QQuickItem *item) { return item->objectName() == u"rowName"; });
        QCOMPARE(names.size(), 2);
        QCOMPARE(names[0]->property("text").toString(), u"Atlas"_s);
        QCOMPARE(names[1]->property("text").toString(), u"Quill"_s);
        QVERIFY(fixture.text(u"org.example.atlas  \u00b7  Team 7QK2M4X9TP"_s) != nullptr);
        QVERIFY(fixture.text(u"org.example.quill"_s) != nullptr);
        QVERIFY(fixture.text(u"Blocked"_s) != nullptr);
    }

    void theRemoveButtonTakesTheApplicationOffTheList()
    {
        WindowFixture fixture({atlas, quill});
        auto *const button = fixture.button(u"Remove from list"_s);
        QVERIFY(button != nullptr);
        fixture.click(button);
        fixture.settle();
        QCOMPARE(fixture.store->applications().size(), 1);
        QCOMPARE(fixture.store->applications().first().name, u"Quill"_s);
    }

    void theListThatBecomesEmptySaysSo()
    {
        WindowFixture fixture({atlas});
        QCOMPARE(fixture.item(u"emptyList"_s), nullptr);
        QVERIFY(fixture.item(u"blockedApps"_s) != nullptr);
        fixture.click(fixture.button(u"Remove from list"_s));
        fixture.settle();
        QVERIFY(fixture.item(u"emptyList"_s) != nullptr);
        QCOMPARE(fixture.item(u"blockedApps"_s), nullptr);
        QCOMPARE(fixture.item(u"countBadge"_s)->property("count").toInt(), 0);
    }

    void theButtonsOfTheInstallationPanelDoWhatTheySay()
    {
        WindowFixture fixture;
        fixture.requireInstallation();
        // Panels grow into place; a click has to wait for that.
        QVERIFY(fixture.waitUntilGrown(u"installationPanel"_s));
        fixture.click(fixture.button(u"Open Finder Folders"_s));
        QCOMPARE(fixture.platform.actions.calls,
            (QStringList{u"folder /Users/someone/Downloads"_s, u"folder /Applications"_s}));
        fixture.click(fixture.button(u"Quit Zorvane"_s));
        QCOMPARE(fixture.platform.actions.calls.last(), u"terminate"_s);
    }

    void theButtonsOfTheApprovalPanelDoWhatTheySay()
    {
        WindowFixture fixture;
        fixture.awaitApproval();
        QVERIFY(fixture.waitUntilGrown(u"approvalPanel"_s));
        fixture.click(fixture.button(u"Open System Settings"_s));
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"settings"_s});
        // The refresh of a program that waits asks for the activation again. One is outstanding, so
        // the request shows by the load that comes of a refusal.
        const auto submitted = fixture.platform.systemExtensions.submitted.size();
        fixture.platform.systemExtensions.delegate()->requestDidFail(
            {u"OSSystemExtensionErrorDomain"_s, 13, u"Not yet allowed."_s});
        fixture.settle();
        fixture.click(fixture.button(u"Retry Activation"_s));
        fixture.settle();
        QCOMPARE(fixture.platform.systemExtensions.submitted.size(), submitted + 1);
    }

    void aFailureIsShownOnce()
    {
        WindowFixture fixture;
        const auto message = u"Restart your Mac to finish installing the extension."_s;
        fixture.fail(message);
        QTRY_VERIFY(fixture.text(message) != nullptr);
        const auto labels = fixture.items(
            [&](const QQuickItem *item) { return item->property("text") == message; });
        QCOMPARE(labels.size(), 1);
        fixture.enable();
        QVERIFY2(fixture.text(message) != nullptr, "it fades out with its text");
        QTRY_COMPARE(fixture.text(message), nullptr);
    }

    void aFailureIsShownToTheLetter()
    {
        WindowFixture fixture;
        const auto message = u"<b>Not</b> \"allowed\" &amp; over."_s;
        fixture.fail(message);
        QTRY_VERIFY(fixture.text(message) != nullptr);
        QCOMPARE(fixture.text(message)->property("textFormat").toInt(), int(Qt::PlainText));
    }

    void becomingActiveRefreshesOnceForEachChange()
    {
        WindowFixture fixture;
        const auto loads = fixture.platform.filterManager.loads;
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationHidden);
        fixture.settle();
        QCOMPARE(fixture.platform.filterManager.loads, loads);
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
        fixture.settle();
        QCOMPARE(fixture.platform.filterManager.loads, loads + 1);
    }

    void anotherWindowOfTheProgramDoesNotRefresh()
    {
        WindowFixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        fixture.settle();
        const auto loads = fixture.platform.filterManager.loads;
        QWindow other;
        other.setTransientParent(fixture.window());
        other.show();
        other.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        fixture.window()->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        fixture.settle();
        QCOMPARE(fixture.platform.filterManager.loads, loads);
    }

    void theColoursFollowTheSystemWhileRunning()
    {
        const WindowFixture fixture;
        const auto dot = [&] { return colour(fixture.item(u"statusDot"_s)); };
        QCOMPARE(fixture.window()->color(), Appearance::window(false));
        const auto light = dot();
        {
            const Appearance appearance(true);
            QTRY_COMPARE(fixture.window()->color(), Appearance::window(true));
            QVERIFY(dot() != light);
        }
        QTRY_COMPARE(fixture.window()->color(), Appearance::window(false));
        QCOMPARE(dot(), light);
    }

    void rowsOutOfSightAreNotBuilt()
    {
        WindowFixture fixture(manySamples(300));
        const auto builtRows = [&] {
            return fixture.items(
                [](const QQuickItem *item) { return item->objectName() == u"rowName"; });
        };
        QVERIFY(builtRows().size() < 20);
        auto *const area = fixture.item(u"page"_s);
        QCOMPARE(fixture.item(u"blockedApps"_s)->height(), 300 * 57.0 - 1);
        area->setProperty("contentY", area->property("contentHeight").toReal() - area->height());
        QTRY_VERIFY(fixture.text(u"App 299"_s) != nullptr);
        QVERIFY(builtRows().size() < 20);
        QCOMPARE(inWindow(fixture.item(u"blockedApps"_s)).bottom(),
            WindowFixture::menuBarHeight + 650.0 - 20);
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
