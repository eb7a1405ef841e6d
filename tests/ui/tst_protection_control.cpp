#include "ui/window_fixture.h"

#include <QColor>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

class TestProtectionControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachStatusHasItsDotItsTextAndItsSwitch_data()
    {
        using Enter = std::function<void(WindowFixture &)>;
        QTest::addColumn<Enter>("enter");
        QTest::addColumn<QColor>("dot");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("usable");
        QTest::addColumn<bool>("on");
        const QColor orange(0xff9500);
        QTest::newRow("inactive") << Enter([](auto &) {}) << QColor(0x8e8e93) << u"Protection off"_s
                                  << true << false;
        QTest::newRow("installation required")
            << Enter([](auto &fixture) { fixture.requireInstallation(); }) << orange
            << u"Move to Applications"_s << false << false;
        QTest::newRow("activating") << Enter([](auto &fixture) { fixture.activate(); }) << orange
                                    << u"Turning on\u2026"_s << false << false;
        QTest::newRow("awaiting approval") << Enter([](auto &fixture) { fixture.awaitApproval(); })
                                           << orange << u"Awaiting approval"_s << false << false;
        QTest::newRow("enabled") << Enter([](auto &fixture) { fixture.enable(); })
                                 << QColor(0x28b84a) << u"Protection on"_s << true << true;
        QTest::newRow("failed") << Enter([](auto &fixture) { fixture.fail(u"It failed."_s); })
                                << QColor(0xff3b30) << u"Action required"_s << true << false;
    }

    void eachStatusHasItsDotItsTextAndItsSwitch()
    {
        QFETCH(std::function<void(WindowFixture &)>, enter);
        WindowFixture fixture;
        enter(fixture);
        const auto *const dot = fixture.item(u"statusDot"_s);
        QTEST(dot->property("color").value<QColor>(), "dot");
        QCOMPARE(dot->size(), QSizeF(8, 8));
        QCOMPARE(dot->property("radius").toReal(), 4.0);
        const auto *const label = fixture.item(u"statusText"_s);
        QTEST(label->property("text").toString(), "text");
        QCOMPARE(label->property("font").value<QFont>().pixelSize(), 11);
        QCOMPARE(label->property("font").value<QFont>().weight(), QFont::Medium);
        const auto *const toggle = fixture.item(u"protectionSwitch"_s);
        QTEST(toggle->isEnabled(), "usable");
        QTEST(toggle->property("checked").toBool(), "on");
        QFETCH(QString, text);
        QCOMPARE(fixture.item(u"explanationLayer"_s) != nullptr, text == u"Move to Applications"_s);
    }

    void theSwitchAsksForProtectionAndFollowsTheStatus()
    {
        WindowFixture fixture;
        auto *const toggle = fixture.item(u"protectionSwitch"_s);
        fixture.click(toggle);
        fixture.settle();
        QCOMPARE(fixture.platform.systemExtensions.submitted.size(), 1);
        QCOMPARE(fixture.platform.preferences.boolean(u"protectionRequested"_s), true);
        QVERIFY2(!toggle->property("checked").toBool(), "on before the system has said so");
        fixture.platform.systemExtensions.delegate()->requestDidFinish(
            zorvane::platform::ActivationResult::Completed);
        fixture.settle();
        QVERIFY(toggle->property("checked").toBool());
        fixture.click(toggle);
        fixture.settle();
        QVERIFY(!toggle->property("checked").toBool());
        QVERIFY(!fixture.platform.filterManager.stored.enabled);
    }

    void aTapOnTheSwitchOfAMisplacedProgramExplains()
    {
        WindowFixture fixture;
        fixture.requireInstallation();
        fixture.click(fixture.item(u"protectionSwitch"_s));
        QCOMPARE(fixture.store->alertMessage(),
            u"Move Zorvane to your Mac's Applications folder, quit this copy, and open it again "
            "from Applications before turning on protection."_s);
        QVERIFY(fixture.text(*fixture.store->alertMessage()) != nullptr);
    }

    void aTapOnTheSwitchWhileActivatingDoesNothing()
    {
        WindowFixture fixture;
        fixture.activate();
        const auto loads = fixture.platform.filterManager.loads;
        const auto lines = fixture.platform.log.lines;
        fixture.platform.preferences.written.clear();
        fixture.click(fixture.item(u"protectionSwitch"_s));
        fixture.settle();
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
        QCOMPARE(fixture.platform.filterManager.loads, loads);
        // A second request would be told in the log, and nowhere else.
        QCOMPARE(fixture.platform.log.lines, lines);
        QVERIFY(fixture.platform.preferences.written.isEmpty());
    }

    void activatingShowsNoPanel()
    {
        WindowFixture fixture;
        fixture.activate();
        QCOMPARE(fixture.item(u"installationPanel"_s), nullptr);
        QCOMPARE(fixture.item(u"approvalPanel"_s), nullptr);
    }

    void theSwitchWorksByTheKeyboard()
    {
        WindowFixture fixture;
        auto *const toggle = fixture.item(u"protectionSwitch"_s);
        toggle->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(fixture.window(), Qt::Key_Space);
        QCOMPARE(fixture.platform.systemExtensions.submitted.size(), 1);
    }
};

QTEST_MAIN(TestProtectionControl)
#include "tst_protection_control.moc"
