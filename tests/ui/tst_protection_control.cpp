#include "ui/window_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

class TestProtectionControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachStatusHasItsSwitch_data()
    {
        using Enter = std::function<void(WindowFixture &)>;
        QTest::addColumn<Enter>("enter");
        QTest::addColumn<bool>("usable");
        QTest::addColumn<bool>("on");
        QTest::addColumn<bool>("explained");
        const auto nothing = [](auto &) {};
        const auto fail = [](auto &fixture) { fixture.fail(u"It failed."_s); };
        QTest::newRow("inactive") << Enter(nothing) << true << false << false;
        QTest::newRow("installation required")
            << Enter(&WindowFixture::requireInstallation) << false << false << true;
        QTest::newRow("activating") << Enter(&WindowFixture::activate) << false << false << false;
        QTest::newRow("awaiting approval")
            << Enter(&WindowFixture::awaitApproval) << false << false << false;
        QTest::newRow("enabled") << Enter(&WindowFixture::enable) << true << true << false;
        QTest::newRow("failed") << Enter(fail) << true << false << false;
    }

    void eachStatusHasItsSwitch()
    {
        QFETCH(std::function<void(WindowFixture &)>, enter);
        WindowFixture fixture;
        enter(fixture);
        const auto *const toggle = fixture.item(u"protectionSwitch"_s);
        QTEST(toggle->isEnabled(), "usable");
        QTEST(toggle->property("checked").toBool(), "on");
        QTEST(fixture.item(u"explanationLayer"_s) != nullptr, "explained");
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
        QVERIFY(fixture.store->alertMessage().has_value());
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
