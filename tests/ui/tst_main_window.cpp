#include "ui/window_fixture.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const SampleApplication atlas{u"Atlas"_s, u"org.example.atlas"_s, u"7QK2M4X9TP"_s, std::nullopt};
const SampleApplication quill{u"Quill"_s, u"org.example.quill"_s, std::nullopt, std::nullopt};

QRectF inWindow(const QQuickItem *item)
{
    return item->mapRectToScene(QRectF(QPointF(), item->size()));
}

QColor colour(const QQuickItem *item)
{
    return item->property("color").value<QColor>();
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowHasItsSizeAndItsLeastSize()
    {
        const WindowFixture fixture;
        QCOMPARE(fixture.window()->size(), QSize(760, 650 + WindowFixture::menuBarHeight));
        QCOMPARE(fixture.window()->minimumSize(), QSize(680, 560 + WindowFixture::menuBarHeight));
        QCOMPARE(fixture.window()->title(), u"Zorvane"_s);
    }

    void theHeaderNamesTheProduct()
    {
        const WindowFixture fixture;
        const auto *const icon = fixture.item(u"ownIcon"_s);
        QCOMPARE(icon->property("status").toInt(), 1);
        const QImage picture = fixture.window()->grabWindow();
        const auto colorAt = [&](QPointF place) {
            const QPointF pixel = icon->mapToScene(place) * picture.devicePixelRatio();
            return picture.pixelColor(pixel.toPoint());
        };
        const QPointF middle(icon->width() / 2, icon->height() / 2);
        QVERIFY(colorAt(middle) != colorAt({-5, middle.y()}));
        QVERIFY(fixture.text(u"Zorvane"_s) != nullptr);
        QVERIFY(fixture.text(u"Control which apps can access the network"_s) != nullptr);
    }

    void theDesktopGetsAPictureOfTheProgram()
    {
        const WindowFixture fixture;
        QTRY_VERIFY(!QGuiApplication::windowIcon().isNull());
    }

    void theListGoesWithItsLastRow()
    {
        WindowFixture fixture({atlas});
        QVERIFY(fixture.item(u"blockedApps"_s) != nullptr);
        fixture.store->remove(fixture.store->applications().constFirst());
        fixture.settle();
        QCOMPARE(fixture.item(u"blockedApps"_s), nullptr);
        QVERIFY(fixture.text(u"No blocked apps"_s) != nullptr);
    }

    void anEmptyListSaysSo()
    {
        const WindowFixture fixture;
        QVERIFY(fixture.text(u"Blocked apps"_s) != nullptr);
        QVERIFY(fixture.text(u"No blocked apps"_s) != nullptr);
        QVERIFY(fixture.text(u"Apps you add will appear here."_s) != nullptr);
        QCOMPARE(fixture.item(u"countBadge"_s)->property("count").toInt(), 0);
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

    void aMisplacedProgramIsToldToMove()
    {
        WindowFixture fixture;
        fixture.requireInstallation();
        QVERIFY(fixture.waitUntilGrown(u"installationPanel"_s));
        QVERIFY(fixture.text(u"Finish installing Zorvane"_s) != nullptr);
        QVERIFY(fixture.text(
                    u"macOS can only enable Zorvane's network extension when the app is in the "
                    "Applications folder. Quit this copy, drag Zorvane from Downloads into "
                    "Applications, then open it there."_s)
            != nullptr);
        QVERIFY(fixture.button(u"Open Finder Folders"_s)->property("prominent").toBool());
        QVERIFY(!fixture.button(u"Quit Zorvane"_s)->property("prominent").toBool());
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

    void anApprovalIsExplainedStepByStep()
    {
        WindowFixture fixture;
        fixture.awaitApproval();
        QVERIFY(fixture.waitUntilGrown(u"approvalPanel"_s));
        qreal above = 0;
        for (const auto &line :
            {u"Finish enabling protection"_s, u"macOS is waiting for you to approve Zorvane."_s,
                u"1. Open System Settings."_s, u"2. Scroll to Extensions and choose By Category."_s,
                u"3. If Network Extensions is listed, open it and enable Zorvane."_s,
                u"4. If it is not listed yet, return here and retry activation."_s}) {
            const auto *const text = fixture.text(line);
            QVERIFY2(text != nullptr, qPrintable(line));
            QVERIFY2(inWindow(text).top() > above, qPrintable(line));
            above = inWindow(text).top();
        }
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
        const auto before = QGuiApplication::palette();
        const WindowFixture fixture;
        QCOMPARE(fixture.window()->color(), QColor(0xececec));
        auto dark = before;
        dark.setColor(QPalette::Window, QColor(0x202020));
        QGuiApplication::setPalette(dark);
        QTRY_COMPARE(fixture.window()->color(), QColor(0x28282a));
        QCOMPARE(colour(fixture.item(u"statusDot"_s)), QColor(0x98989d));
        QGuiApplication::setPalette(before);
        QTRY_COMPARE(fixture.window()->color(), QColor(0xececec));
    }

    void rowsOutOfSightAreNotBuilt()
    {
        QList<SampleApplication> many;
        for (int number = 0; number < 300; ++number)
            many.append({u"App %1"_s.arg(number, 3, 10, QChar(u'0')),
                u"org.example.app%1"_s.arg(number), std::nullopt, std::nullopt});
        WindowFixture fixture(many);
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
