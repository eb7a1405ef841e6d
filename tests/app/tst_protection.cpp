#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "fakes/fake_platform.h"
#include "sample_applications.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using app::AppBlockStore;
using filter::FilterStatus;
using Kind = FilterStatus::Kind;

namespace
{

const QString wishKey = u"protectionRequested"_s;

struct Fixture {
    FakePlatform system;
    std::unique_ptr<AppBlockStore> store;

    explicit Fixture(const QList<records::BlockedApplication> &stored = {},
        std::optional<bool> wish = std::nullopt)
    {
        system.preferences.values.insert(
            u"blockedApplications"_s, records::encodedApplications(stored));
        if (wish)
            system.preferences.values.insert(wishKey, *wish);
    }

    void start()
    {
        store = std::make_unique<AppBlockStore>(system.ports);
        system.scheduler.settle();
    }

    void finishActivation()
    {
        system.systemExtensions.delegate()->requestDidFinish(platform::ActivationResult::Completed);
        system.scheduler.settle();
    }

    /** What the filter would block now. */
    [[nodiscard]] QStringList writtenKeys() const
    {
        const auto &provider = system.filterManager.stored.provider;
        return provider ? provider->vendorConfiguration.at(u"blockedCodeIdentities"_s)
                        : QStringList{u"nothing written"_s};
    }

    [[nodiscard]] qsizetype activations() const { return system.systemExtensions.submitted.size(); }
    [[nodiscard]] std::optional<bool> wish() const
    {
        return system.preferences.contains(wishKey)
            ? std::optional(system.preferences.boolean(wishKey))
            : std::nullopt;
    }
};

const auto tool = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
const QStringList toolKeys{records::identityKey({u"com.example.Tool"_s, u"TEAM"_s})};

} // namespace

class TestProtection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void switchingOnKeepsTheWishAndActivates()
    {
        Fixture f({tool}, false);
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
        Fixture f({tool}, true);
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
        Fixture f({tool}, false);
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
        Fixture f;
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
        Fixture f(hasApplications ? QList{tool} : QList<records::BlockedApplication>());
        f.system.filterManager.stored.enabled = enabled;
        f.start();
        QTEST(f.wish().value(), "wish");
    }

    void inactiveWithAnApplicationRequestsActivation()
    {
        Fixture f({tool});
        f.start();
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void inactiveWithAnEmptyListDisables()
    {
        Fixture f;
        f.start();
        QCOMPARE(f.wish(), false);
        QCOMPARE(f.activations(), 0);
        QCOMPARE(f.system.filterManager.saves, 1);
        QVERIFY(!f.system.filterManager.stored.enabled);
    }

    void enabledAppliesTheRules()
    {
        Fixture f({tool});
        f.system.filterManager.stored.enabled = true;
        f.start();
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void anyOtherFirstStatusWaitsForTheNext()
    {
        Fixture f({tool});
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
        Fixture f;
        f.start();
        f.system.preferences.values.remove(wishKey);
        QCOMPARE(f.store->filterController()->status(), FilterStatus(Kind::Inactive));
        f.store->refreshProtection();
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), false);
    }

    void aStatusBeforeTheListIsLoadedPushesNothing()
    {
        Fixture f({tool});
        f.system.filterManager.stored.enabled = true;
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.system.filterManager.holdAnswers = true;
        f.store->refreshProtection();
        f.system.filterManager.held.takeFirst()();
        f.system.scheduler.runPosted();
        QVERIFY(!f.store->hasLoadedApplications());
        QCOMPARE(f.store->filterController()->status(), FilterStatus(Kind::Enabled));
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.system.filterManager.saves, 0);
        f.system.filterManager.holdAnswers = false;
        f.system.scheduler.settle();
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
        QVERIFY(f.system.filterManager.stored.enabled);
    }

    void anApprovalAwaitedBeforeTheListIsLoadedActivatesNothing()
    {
        Fixture f({tool}, true);
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.system.filterManager.loadErrors.emplace_back(
            platform::PlatformError{u"NEFilterErrorDomain"_s, 5, u"permission denied"_s});
        f.store->refreshProtection();
        f.system.scheduler.runBackgroundJob(1);
        f.system.scheduler.runPosted();
        QCOMPARE(f.store->filterController()->status(), FilterStatus(Kind::AwaitingApproval));
        QVERIFY(!f.store->hasLoadedApplications());
        f.store->refreshProtection();
        f.system.scheduler.settle();
        QCOMPARE(f.activations(), 0);
    }

    void inactiveBeforeTheListIsLoadedDecidesNothing()
    {
        Fixture f({tool});
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.store->refreshProtection();
        f.system.scheduler.runBackgroundJob(1); // the refresh; the load still waits
        f.system.scheduler.runPosted();
        QVERIFY(!f.store->hasLoadedApplications());
        QCOMPARE(f.wish(), std::nullopt);
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.activations(), 1);
    }

    void switchingOnBeforeTheListIsLoadedWaitsForIt()
    {
        Fixture f({tool}, false);
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.store->setProtectionEnabled(true);
        QCOMPARE(f.wish(), true);
        QCOMPARE(f.activations(), 0);
        f.system.scheduler.settle();
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void switchingOffBeforeTheListIsLoadedKeepsTheStoredRulesUntilThen()
    {
        Fixture f({tool}, true);
        f.system.filterManager.stored.enabled = true;
        f.store = std::make_unique<AppBlockStore>(f.system.ports);
        f.store->setProtectionEnabled(false);
        QCOMPARE(f.system.filterManager.loads, 0);
        f.system.scheduler.settle();
        QCOMPARE(f.wish(), false);
        QVERIFY(!f.system.filterManager.stored.enabled);
    }

    void aStatusChangeDoesNothingOnceTheWishIsKnown()
    {
        Fixture f({tool}, false);
        f.system.filterManager.stored.enabled = true;
        f.start();
        QCOMPARE(f.wish(), false);
        QVERIFY(f.system.preferences.written.isEmpty());
        QCOMPARE(f.system.filterManager.saves, 0);
        QVERIFY(f.system.filterManager.stored.enabled);
    }

    void launchRefreshesWithTheRules()
    {
        Fixture f({tool}, true);
        f.system.filterManager.stored.enabled = true;
        f.start();
        QCOMPARE(f.activations(), 1);
        f.finishActivation();
        QCOMPARE(f.writtenKeys(), toolKeys);
    }

    void launchWithTheFilterOffOnlyReadsItsState()
    {
        Fixture f({tool}, true);
        f.start();
        QCOMPARE(f.activations(), 0);
        QCOMPARE(f.system.filterManager.saves, 0);
        QCOMPARE(f.system.filterManager.loads, 1);
    }

    void refreshAsksAgainWhileApprovalIsAwaited()
    {
        Fixture f({tool}, false);
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
        Fixture f({tool}, true);
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
        Fixture f({}, false);
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
