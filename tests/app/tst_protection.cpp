#include "protection_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using filter::FilterStatus;
using Kind = FilterStatus::Kind;

class TestProtection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void switchingOnKeepsTheWishAndActivates()
    {
        ProtectionFixture f({tool}, false);
        f.start();
        f.store->setProtectionEnabled(true);
        QCOMPARE(f.wish(), true);
        QVERIFY(!f.store->isProtectionEnabled());
        f.finishActivation();
        QVERIFY(f.store->isProtectionEnabled());
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void switchingOffKeepsTheWishAndDisables()
    {
        ProtectionFixture f({tool}, true);
        f.system.filterManager.stored.enabled = true;
        f.start();
        f.store->setProtectionEnabled(false);
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), false);
        QVERIFY(!f.system.filterManager.stored.enabled);
        QVERIFY(!f.store->isProtectionEnabled());
    }

    void switchingOffWhileActivatingDisables()
    {
        ProtectionFixture f({tool}, false);
        f.start();
        f.store->setProtectionEnabled(true);
        QCOMPARE(f.store->filterController()->status(), FilterStatus(Kind::Activating));
        f.system.filterManager.stored.enabled = true; // by somebody else, meanwhile
        f.store->setProtectionEnabled(false);
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), false);
        QVERIFY(!f.system.filterManager.stored.enabled);
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void explainsARefusedSwitchOnlyOutsideApplications()
    {
        ProtectionFixture f;
        f.start();
        f.store->explainProtectionUnavailable();
        QVERIFY(!f.store->alertMessage());
        f.system.mainBundle.path = "/tmp/Zorvane.app";
        f.store->refreshProtection();
        f.store->explainProtectionUnavailable();
        QCOMPARE(f.store->alertMessage(),
            u"Move Zorvane to your Mac's Applications folder, quit this copy, and open it again "
            "from Applications before turning on protection."_s);
    }

    void firstStatusDecidesTheWishOnce_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("hasApplications");
        QTest::addColumn<bool>("wish");
        QTest::newRow("enabled, applications") << true << true << true;
        QTest::newRow("enabled, none") << true << false << true;
        QTest::newRow("inactive, applications") << false << true << true;
        QTest::newRow("inactive, none") << false << false << false;
    }

    void firstStatusDecidesTheWishOnce()
    {
        QFETCH(bool, enabled);
        QFETCH(bool, hasApplications);
        ProtectionFixture f(hasApplications ? QList{tool} : QList<records::BlockedApplication>());
        f.system.filterManager.stored.enabled = enabled;
        f.start();
        QTEST(f.wish().value(), "wish");
    }

    void inactiveWithAnApplicationRequestsActivation()
    {
        ProtectionFixture f({tool});
        f.start();
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void inactiveWithAnEmptyListDisables()
    {
        ProtectionFixture f;
        f.start();
        QCOMPARE(f.wish(), false);
        QCOMPARE(f.activations(), 0);
        QCOMPARE(f.system.filterManager.saves, 1);
        QVERIFY(!f.system.filterManager.stored.enabled);
    }

    void enabledAppliesTheRules()
    {
        ProtectionFixture f({tool});
        f.system.filterManager.stored.enabled = true;
        f.start();
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void anyOtherFirstStatusWaitsForTheNext()
    {
        ProtectionFixture f({tool});
        f.system.mainBundle.path = "/tmp/Zorvane.app";
        f.start();
        QCOMPARE(f.wish(), std::nullopt);
        f.system.mainBundle.path = "/Applications/Zorvane.app";
        f.system.filterManager.loadErrors = {platform::PlatformError{u"X"_s, 1, u"broken"_s}};
        f.store->refreshProtection();
        f.system.scheduler.settle();
        QCOMPARE(f.store->filterController()->status().kind(), Kind::Failed);
        QCOMPARE(f.wish(), std::nullopt);
        f.store->refreshProtection();
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), true);
    }

    void aRefreshThatFindsInactiveWhileInactiveDecidesTheWish()
    {
        ProtectionFixture f;
        f.start();
        f.system.preferences.values.remove(wishKey);
        QCOMPARE(f.store->filterController()->status(), FilterStatus(Kind::Inactive));
        f.store->refreshProtection();
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), false);
    }

    void aStatusChangeDoesNothingOnceTheWishIsKnown()
    {
        ProtectionFixture f({tool}, false);
        f.system.filterManager.stored.enabled = true;
        f.start();
        QCOMPARE(f.wish(), false);
        QVERIFY(f.system.preferences.written.isEmpty());
        QCOMPARE(f.system.filterManager.saves, 0);
        QVERIFY(f.system.filterManager.stored.enabled);
    }

    void launchRefreshesWithTheRules()
    {
        ProtectionFixture f({tool}, true);
        f.system.filterManager.stored.enabled = true;
        f.start();
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void launchWithTheFilterOffOnlyReadsItsState()
    {
        ProtectionFixture f({tool}, true);
        f.start();
        QCOMPARE(f.activations(), 0);
        QCOMPARE(f.system.filterManager.saves, 0);
        QCOMPARE(f.system.filterManager.loads, 1);
    }

    void refreshAsksAgainWhileApprovalIsAwaited()
    {
        ProtectionFixture f({tool}, false);
        f.start();
        f.store->setProtectionEnabled(true);
        f.system.systemExtensions.delegate()->requestDidFail(
            {u"OSSystemExtensionErrorDomain"_s, 13, u"ask"_s});
        f.system.scheduler.settle();
        QCOMPARE(f.store->filterController()->status(), FilterStatus(Kind::AwaitingApproval));
        f.store->refreshProtection();
        QCOMPARE(f.activations(), 2);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void refreshOtherwiseOnlyReads()
    {
        ProtectionFixture f({tool}, true);
        f.system.filterManager.stored.enabled = true;
        f.start();
        f.finishActivation();
        const int saves = f.system.filterManager.saves;
        const int loads = f.system.filterManager.loads;
        f.store->refreshProtection();
        f.system.scheduler.settle();
        QCOMPARE(f.activations(), 1);
        QCOMPARE(f.system.filterManager.saves, saves);
        QCOMPARE(f.system.filterManager.loads, loads + 1);
    }

    void addingSwitchesProtectionOn()
    {
        ProtectionFixture f({}, false);
        f.start();
        f.store->add(tool);
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
        QCOMPARE(f.store->blockedCodeIdentityKeys(), toolKeys);
        QCOMPARE(f.store->blockedApplicationPaths(), QStringList{tool.path});
    }
};

QTEST_GUILESS_MAIN(TestProtection)
#include "tst_protection.moc"
