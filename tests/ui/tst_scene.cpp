#include "ui/window_fixture.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using zorvane::ui::DesktopConventions;

namespace
{

const DesktopConventions staysAlive{false, [](QWindow &) {}};

int framed = 0;
const DesktopConventions framesItsWindow{false, [](QWindow &) { ++framed; }};

void announce(Qt::ApplicationState state)
{
    Q_EMIT qGuiApp->applicationStateChanged(state);
}

} // namespace

class TestScene : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingOfTheOtherWindowsIsBuiltBeforeTheyAreOpened()
    {
        const WindowFixture fixture;
        QCOMPARE(fixture.ui->otherWindows().settings(), nullptr);
        QCOMPARE(fixture.ui->otherWindows().about(), nullptr);
    }

    void thereIsOneSettingsWindow()
    {
        WindowFixture fixture;
        fixture.openSettings();
        auto *const settings = fixture.window();
        fixture.turnTo(fixture.ui->window());
        fixture.window()->requestActivate();
        fixture.openSettings();
        QCOMPARE(fixture.window(), settings);
    }

    void minimisedSettingsComeForward()
    {
        WindowFixture fixture;
        fixture.openSettings();
        fixture.window()->showMinimized();
        fixture.ui->otherWindows().showSettings();
        QVERIFY(!(fixture.window()->windowStates() & Qt::WindowMinimized));
    }

    void closedSettingsOpenAgain()
    {
        WindowFixture fixture;
        fixture.openSettings();
        QTest::keyClick(fixture.window(), Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!fixture.window()->isVisible());
        fixture.ui->otherWindows().showSettings();
        QVERIFY(fixture.window()->isVisible());
    }

    void closingTheSettingsLeavesTheProgramRunning()
    {
        WindowFixture fixture;
        fixture.openSettings();
        QTimer::singleShot(0, fixture.window(), &QWindow::close);
        QTimer::singleShot(200, qGuiApp, [] { QGuiApplication::exit(1); });
        QCOMPARE(QGuiApplication::exec(), 1);
        QVERIFY(!fixture.window()->isVisible());
        QVERIFY(fixture.ui->window()->isVisible());
    }

    void closingTheMainWindowEndsTheProgramAndItsOtherWindows()
    {
        WindowFixture fixture;
        fixture.openSettings();
        fixture.ui->otherWindows().showAbout();
        QTimer::singleShot(0, fixture.ui->window(), &QWindow::close);
        QTimer::singleShot(5000, qGuiApp, [] { QGuiApplication::exit(1); });
        QCOMPARE(QGuiApplication::exec(), 0);
        QVERIFY(!fixture.window()->isVisible());
        QVERIFY(!fixture.ui->otherWindows().isAnyVisible());
    }

    void whereProgramsStayAliveTheSettingsStayOpen()
    {
        WindowFixture fixture({}, false, staysAlive);
        fixture.openSettings();
        QVERIFY(!QGuiApplication::quitOnLastWindowClosed());
        fixture.ui->window()->close();
        QVERIFY(fixture.window()->isVisible());
    }

    void whereProgramsStayAliveBeingCalledUpShowsTheMainWindowAgain()
    {
        WindowFixture fixture({}, false, staysAlive);
        announce(Qt::ApplicationActive);
        fixture.window()->close();
        announce(Qt::ApplicationActive);
        QVERIFY(fixture.window()->isVisible());
    }

    void theMainWindowStaysClosedWhileAnotherIsOpen()
    {
        WindowFixture fixture({}, false, staysAlive);
        fixture.openSettings();
        fixture.ui->window()->close();
        announce(Qt::ApplicationInactive);
        announce(Qt::ApplicationActive);
        QVERIFY(!fixture.ui->window()->isVisible());
    }

    void theMainWindowIsFramedWheneverItComesOnScreen()
    {
        framed = 0;
        const WindowFixture fixture({}, false, framesItsWindow);
        QCOMPARE(framed, 1);
        fixture.window()->close();
        fixture.window()->show();
        QCOMPARE(framed, 2);
    }

    void anUnfinishedGuideShowsAgainWithTheWindow()
    {
        WindowFixture fixture({}, true, staysAlive);
        fixture.ui->onboarding().close();
        fixture.window()->close();
        QVERIFY(!fixture.ui->onboarding().showingOnboarding());
        fixture.window()->show();
        QVERIFY(fixture.ui->onboarding().showingOnboarding());
        fixture.ui->onboarding().finish();
        fixture.window()->close();
        fixture.window()->show();
        QVERIFY(!fixture.ui->onboarding().showingOnboarding());
    }

    void becomingActiveRefreshesOnceHoweverOftenItIsAnnounced()
    {
        WindowFixture fixture;
        announce(Qt::ApplicationInactive);
        fixture.settle();
        const auto loads = fixture.platform.filterManager.loads;
        announce(Qt::ApplicationActive);
        announce(Qt::ApplicationActive);
        fixture.settle();
        QCOMPARE(fixture.platform.filterManager.loads, loads + 1);
    }

    void aWindowThatClosesWithAToolTipWarnsOfNothing()
    {
        QTest::failOnWarning(QRegularExpression(u"TypeError"_s));
        const WindowFixture fixture;
        const auto *const help = fixture.button(u"Show getting started"_s);
        const auto centre = help->mapToScene(QPointF(14, 14)).toPoint();
        QTest::mouseMove(fixture.window(), centre);
        QTRY_VERIFY(fixture.item(u"toolTip"_s) != nullptr);
        fixture.window()->close();
        QTest::mouseMove(fixture.window(), centre + QPoint(100, 0));
        QTest::mouseMove(fixture.window(), centre);
    }

    void openingTheSettingsDoesNotRefresh()
    {
        WindowFixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        fixture.settle();
        const auto loads = fixture.platform.filterManager.loads;
        fixture.openSettings();
        fixture.ui->window()->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(fixture.ui->window()));
        fixture.window()->close();
        fixture.settle();
        QCOMPARE(fixture.platform.filterManager.loads, loads);
    }

    void aGuideThatWasOpenBeginsAnewWithTheWindow()
    {
        QTest::failOnWarning(QRegularExpression(u"TypeError"_s));
        WindowFixture fixture({}, true, staysAlive);
        QTRY_COMPARE(fixture.item(u"onboarding"_s)->opacity(), 1.0);
        fixture.click(fixture.button(u"Continue"_s));
        fixture.click(fixture.button(u"Continue"_s));
        QTRY_VERIFY(fixture.text(u"Drop In an App"_s) != nullptr);
        fixture.window()->close();
        QVERIFY(!fixture.ui->onboarding().showingOnboarding());
        fixture.enable();
        fixture.window()->show();
        QVERIFY(QTest::qWaitForWindowExposed(fixture.window()));
        fixture.settle();
        QCOMPARE(fixture.ui->onboarding().steps().size(), 3);
        QVERIFY(fixture.text(u"Welcome to Zorvane"_s) != nullptr);
        QTRY_COMPARE(fixture.text(u"Drop In an App"_s), nullptr);
        QVERIFY(!fixture.button(u"Back"_s)->isEnabled());
    }

    void theMainWindowClosesByItsKeysLikeTheOthers()
    {
        WindowFixture fixture({}, false, staysAlive);
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        QTest::keyClick(fixture.window(), Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!fixture.window()->isVisible());
    }
};

QTEST_MAIN(TestScene)
#include "tst_scene.moc"
