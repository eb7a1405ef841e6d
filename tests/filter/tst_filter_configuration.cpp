#include "controller_fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using namespace zorvane::tests;
using filter::FilterStatus;
using Kind = FilterStatus::Kind;

class TestFilterConfiguration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheWholeConfiguration()
    {
        ControllerFixture f;
        f.controller->applyRules({testKey(u"a"_s)}, {u"/Applications/A.app"_s});
        f.scheduler.settle();
        const auto &stored = f.manager.stored;
        QVERIFY(stored.provider);
        QVERIFY(stored.provider->filterSockets);
        QCOMPARE(stored.provider->filterDataProviderBundleIdentifier,
            u"dev.kestrelworks.Zorvane.FilterExtension"_s);
        const std::map<QString, QStringList> vendor{{u"blockedCodeIdentities"_s, {testKey(u"a"_s)}},
            {u"blockedSigningIdentifiers"_s, {}},
            {u"blockedApplicationPaths"_s, {u"/Applications/A.app"_s}}};
        QVERIFY(stored.provider->vendorConfiguration == vendor);
        QCOMPARE(stored.localizedDescription, u"Zorvane"_s);
        QCOMPARE(f.log.lines,
            QStringList({u"Filter configuration saved; reloading confirmed state"_s,
                u"Filter status refreshed: enabled=false"_s}));
    }

    void applyRulesLeavesTheFilterSwitchedAsItIs_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }

    void applyRulesLeavesTheFilterSwitchedAsItIs()
    {
        QFETCH(bool, enabled);
        ControllerFixture f;
        f.manager.stored.enabled = enabled;
        f.controller->applyRules({}, {});
        f.scheduler.settle();
        QCOMPARE(f.manager.stored.enabled, enabled);
        QCOMPARE(f.controller->status(), FilterStatus(enabled ? Kind::Enabled : Kind::Inactive));
    }

    void disableFilterKeepsTheLastRules()
    {
        ControllerFixture f;
        f.controller->requestActivation({testKey(u"a"_s)}, {u"/Applications/A.app"_s});
        f.finishActivation();
        QVERIFY(f.manager.stored.enabled);
        f.controller->disableFilter();
        f.scheduler.settle();
        QVERIFY(!f.manager.stored.enabled);
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"a"_s)});
        QCOMPARE(f.storedPaths(), QStringList{u"/Applications/A.app"_s});
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Inactive));
    }

    void onlyTheNewestOfTwoWritesChangesState()
    {
        ControllerFixture f;
        f.manager.holdAnswers = true;
        f.manager.loadErrors = {std::nullopt, std::nullopt};
        f.controller->applyRules({testKey(u"old"_s)}, {});
        f.controller->applyRules({testKey(u"new"_s)}, {});
        QCOMPARE(f.manager.held.size(), 2);
        answerAll(f);
        QCOMPARE(f.manager.saves, 1);
        answerAll(f);
        answerAll(f);
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"new"_s)});
    }

    void aSaveThatFailsAfterANewerWriteSaysNothing()
    {
        ControllerFixture f;
        f.manager.holdAnswers = true;
        f.manager.saveErrors = {brokenDisk};
        f.controller->applyRules({testKey(u"old"_s)}, {});
        answerAll(f); // the load; its save now waits
        QCOMPARE(f.manager.held.size(), 1);
        const auto failingSave = f.manager.held.takeFirst();
        f.controller->applyRules({testKey(u"new"_s)}, {});
        const QStringList linesBefore = f.log.lines;
        failingSave();
        f.scheduler.settle();
        QCOMPARE(f.log.lines, linesBefore);
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Inactive));
    }

    void retriesThreeTimesWhileThePermissionIsOnItsWay()
    {
        ControllerFixture f;
        f.manager.saveErrors
            = {permissionDenied, permissionDenied, permissionDenied, permissionDenied};
        f.controller->applyRules({}, {});
        f.scheduler.settle();
        QCOMPARE(f.manager.saves, 1);
        f.scheduler.advance(1499ms);
        QCOMPARE(f.manager.saves, 1);
        f.scheduler.advance(1ms);
        QCOMPARE(f.manager.saves, 2);
        f.scheduler.advance(1499ms);
        QCOMPARE(f.manager.saves, 2);
        f.scheduler.advance(1ms);
        QCOMPARE(f.manager.saves, 3);
        f.scheduler.advance(1500ms);
        QCOMPARE(f.manager.saves, 4);
        f.scheduler.advance(10s);
        QCOMPARE(f.manager.saves, 4);
        QCOMPARE(f.manager.loads, 4);
        QCOMPARE(f.log.lines,
            QStringList({u"Filter permission is still propagating; retrying save (attempt 2)"_s,
                u"Filter permission is still propagating; retrying save (attempt 3)"_s,
                u"Filter permission is still propagating; retrying save (attempt 4)"_s,
                u"Filter configuration is waiting for user approval"_s}));
        QCOMPARE(f.controller->status(), FilterStatus(Kind::AwaitingApproval));
    }

    void aRetryThatSucceedsWritesTheSameRulesAndSwitch()
    {
        ControllerFixture f;
        f.manager.saveErrors = {permissionDenied};
        f.controller->requestActivation({testKey(u"a"_s)}, {u"/Applications/A.app"_s});
        f.finishActivation();
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Activating));
        f.scheduler.advance(1500ms);
        QVERIFY(f.manager.stored.enabled);
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"a"_s)});
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Enabled));
    }

    void aRetryOfASupersededWriteIsSkipped()
    {
        ControllerFixture f;
        f.manager.saveErrors = {permissionDenied};
        f.controller->applyRules({testKey(u"old"_s)}, {});
        f.scheduler.settle();
        f.controller->applyRules({testKey(u"new"_s)}, {});
        f.scheduler.settle();
        f.scheduler.advance(2s);
        QCOMPARE(f.manager.saves, 2);
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"new"_s)});
    }

    void authorizationRequiredIsNotRetried()
    {
        ControllerFixture f;
        f.manager.saveErrors = {authorizationRequired};
        f.controller->applyRules({}, {});
        f.scheduler.settle();
        f.scheduler.advance(10s);
        QCOMPARE(f.manager.saves, 1);
        QCOMPARE(f.log.lines, QStringList{u"Filter configuration is waiting for user approval"_s});
        QCOMPARE(f.controller->status(), FilterStatus(Kind::AwaitingApproval));
    }

    void aFailedLoadBeforeAWriteIsNotRetried()
    {
        ControllerFixture f;
        f.manager.loadErrors = {permissionDenied};
        f.controller->applyRules({}, {});
        f.scheduler.settle();
        f.scheduler.advance(10s);
        QCOMPARE(f.manager.loads, 1);
        QCOMPARE(f.manager.saves, 0);
        QCOMPARE(
            f.log.lines, QStringList{u"error: Failed to load filter configuration: not yet"_s});
        QCOMPARE(f.controller->status(), FilterStatus(Kind::AwaitingApproval));
    }

    void anyOtherSaveErrorFails()
    {
        ControllerFixture f;
        f.manager.saveErrors = {brokenDisk};
        f.controller->applyRules({}, {});
        f.scheduler.settle();
        QCOMPARE(f.log.lines,
            QStringList{u"error: Failed to save filter configuration: The disk is full."_s});
        QCOMPARE(f.controller->status(), FilterStatus::failed(u"The disk is full."_s));
    }

    void refreshOutsideApplicationsNeverTouchesTheManager()
    {
        ControllerFixture f;
        f.mainBundle.path = "/tmp/Zorvane.app";
        f.controller->refreshStatus();
        f.scheduler.settle();
        QCOMPARE(f.manager.loads, 0);
        QCOMPARE(f.controller->status(), FilterStatus(Kind::InstallationRequired));
    }

    void writesDoNotAskWhereTheProgramStands()
    {
        ControllerFixture f;
        f.mainBundle.path = "/tmp/Zorvane.app";
        f.controller->applyRules({testKey(u"a"_s)}, {});
        f.scheduler.settle();
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"a"_s)});
    }

    void refreshThatFindsTheFilterEnabledActivatesWithTheGivenRules()
    {
        ControllerFixture f;
        f.manager.stored.enabled = true;
        f.controller->refreshStatus(QStringList{testKey(u"a"_s)}, {u"/Applications/A.app"_s});
        f.scheduler.settle();
        QCOMPARE(f.log.lines.first(), u"Filter status refreshed: enabled=true"_s);
        QCOMPARE(f.extensions.submitted.size(), 1);
        f.finishActivation();
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"a"_s)});
    }

    void refreshWithoutRulesOnlyReads()
    {
        ControllerFixture f;
        f.manager.stored.enabled = true;
        f.controller->refreshStatus();
        f.scheduler.settle();
        QVERIFY(f.extensions.submitted.isEmpty());
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Enabled));
    }

    void aFailedRefreshIsLogged()
    {
        ControllerFixture f;
        f.manager.loadErrors = {brokenDisk};
        f.controller->refreshStatus();
        f.scheduler.settle();
        QCOMPARE(f.log.lines,
            QStringList{u"error: Failed to refresh filter status: The disk is full."_s});
    }

    void statusIsAnnouncedAlsoWhenItStaysTheSame()
    {
        ControllerFixture f;
        const QSignalSpy announcements(
            f.controller.get(), &filter::FilterController::statusChanged);
        f.controller->refreshStatus();
        f.scheduler.settle();
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Inactive));
        QCOMPARE(announcements.size(), 1);
    }

    void completionsForAReleasedControllerEndTheChain()
    {
        ControllerFixture f;
        f.controller->applyRules({}, {});
        f.controller.reset();
        f.scheduler.settle();
        QCOMPARE(f.manager.loads, 1);
        QCOMPARE(f.manager.saves, 0);
    }

    void aScheduledRetryKeepsItsControllerUntilItRuns()
    {
        ControllerFixture f;
        f.manager.saveErrors = {permissionDenied};
        f.controller->applyRules({}, {});
        f.scheduler.settle();
        const std::weak_ptr<filter::FilterController> watched = f.controller;
        f.controller.reset();
        QVERIFY(!watched.expired());
        f.scheduler.advance(1500ms);
        QVERIFY(watched.expired());
        QCOMPARE(f.manager.loads, 2);
    }

    void applyRulesNormalisesAndReplacesPendingRules()
    {
        ControllerFixture f;
        f.controller->applyRules({u"broken"_s, u"ICBBQkMK.c2lnbg=="_s}, {u"/tmp/b"_s});
        f.scheduler.settle();
        QCOMPARE(f.storedKeys(), QStringList{u"QUJD.c2lnbg=="_s});
        QCOMPARE(f.storedPaths(), QStringList());
    }

private:
    /** Lets go of the answers that are held now. */
    static void answerAll(ControllerFixture &f)
    {
        for (const auto &answer : std::exchange(f.manager.held, {}))
            answer();
        f.scheduler.settle();
    }
};

QTEST_GUILESS_MAIN(TestFilterConfiguration)
#include "tst_filter_configuration.moc"
