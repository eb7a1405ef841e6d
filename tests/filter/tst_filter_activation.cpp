#include "controller_fixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using filter::FilterStatus;
using Kind = FilterStatus::Kind;

class TestFilterActivation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void submitsOneRequestAndKeepsTheRulesOfTheSecondCall()
    {
        ControllerFixture f;
        f.controller->requestActivation({testKey(u"one"_s)}, {u"/Applications/One.app"_s});
        f.controller->requestActivation({testKey(u"two"_s)}, {u"/Applications/Two.app"_s});
        QCOMPARE(
            f.extensions.submitted, QStringList{u"dev.kestrelworks.Zorvane.FilterExtension"_s});
        QCOMPARE(f.log.lines,
            QStringList({u"Submitting activation request for "
                         "dev.kestrelworks.Zorvane.FilterExtension"_s,
                u"Activation request already pending; updated pending rules"_s}));
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Activating));
        f.finishActivation();
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"two"_s)});
        QCOMPARE(f.storedPaths(), QStringList{u"/Applications/Two.app"_s});
    }

    void outsideApplicationsNothingIsSubmittedButTheRulesAreKept()
    {
        ControllerFixture f;
        f.mainBundle.path = "/home/someone/Downloads/Zorvane.app";
        f.controller->requestActivation({testKey(u"kept"_s)}, {});
        QCOMPARE(f.controller->status(), FilterStatus(Kind::InstallationRequired));
        QCOMPARE(f.log.lines,
            QStringList{u"Activation deferred until Zorvane is opened from /Applications"_s});
        QVERIFY(f.extensions.submitted.isEmpty());
        f.controller->disableFilter();
        f.scheduler.settle();
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"kept"_s)});
    }

    void applicationsFolderTest_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("inside");
        QTest::newRow("directly") << u"/Applications/Zorvane.app"_s << true;
        QTest::newRow("in a folder of it") << u"/Applications/Tools/Zorvane.app"_s << true;
        QTest::newRow("through dots") << u"/x/../Applications/./Zorvane.app"_s << true;
        QTest::newRow("out again") << u"/Applications/../Zorvane.app"_s << false;
        QTest::newRow("the folder itself") << u"/Applications"_s << false;
        QTest::newRow("another folder") << u"/ApplicationsX/Zorvane.app"_s << false;
        QTest::newRow("letter case") << u"/applications/Zorvane.app"_s << false;
        QTest::newRow("the user's own") << u"/Users/someone/Applications/Zorvane.app"_s << false;
        QTest::newRow("disk image") << u"/Volumes/Zorvane/Zorvane.app"_s << false;
    }

    void applicationsFolderTest()
    {
        QFETCH(QString, path);
        ControllerFixture f;
        f.mainBundle.path = path.toStdString();
        QTEST(f.controller->isRunningFromApplicationsFolder(), "inside");
    }

    void applicationsFolderTestResolvesLinks()
    {
        const QString link
            = QDir::temp().filePath(u"zorvane-root-%1"_s.arg(QCoreApplication::applicationPid()));
        QVERIFY(QFile::link(u"/"_s, link));
        ControllerFixture f;
        f.mainBundle.path = (link + u"/Applications/Zorvane.app"_s).toStdString();
        const bool inside = f.controller->isRunningFromApplicationsFolder();
        QFile::remove(link);
        QVERIFY(inside);
    }

    void asksForApprovalAndStaysThereWhenAskedAgain()
    {
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.needApproval();
        QCOMPARE(f.controller->status(), FilterStatus(Kind::AwaitingApproval));
        QCOMPARE(f.log.lines.last(), u"System extension activation requires user approval"_s);
        f.controller->requestActivation({testKey(u"later"_s)}, {});
        QCOMPARE(f.controller->status(), FilterStatus(Kind::AwaitingApproval));
        QCOMPARE(f.extensions.submitted.size(), 1);
        f.finishActivation();
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"later"_s)});
    }

    void anotherRequestCanFollowWhenOneHasEnded()
    {
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.failActivation(brokenDisk);
        QVERIFY(!f.extensions.isOutstanding());
        f.controller->requestActivation({}, {});
        QCOMPARE(f.extensions.submitted.size(), 2);
        QVERIFY(f.extensions.isOutstanding());
    }

    void failures_data()
    {
        QTest::addColumn<QString>("domain");
        QTest::addColumn<qint64>("code");
        QTest::addColumn<QString>("description");
        QTest::addColumn<Kind>("kind");
        const QString domain = u"OSSystemExtensionErrorDomain"_s;
        QTest::newRow("the text names the folder in lower case")
            << domain << qint64(3) << u"Please move to /applications first."_s
            << Kind::InstallationRequired;
        QTest::newRow("the folder's name goes before the approval")
            << domain << qint64(13) << u"Not in /Applications"_s << Kind::InstallationRequired;
        QTest::newRow("authorization required")
            << domain << qint64(13) << u"authorize"_s << Kind::AwaitingApproval;
        QTest::newRow("permission denied")
            << u"Elsewhere"_s << qint64(1) << u"Permission denied"_s << Kind::AwaitingApproval;
        QTest::newRow("invalid signature")
            << domain << qint64(8) << u"Invalid code signature."_s << Kind::Failed;
    }

    void failures()
    {
        QFETCH(QString, domain);
        QFETCH(qint64, code);
        QFETCH(QString, description);
        QFETCH(Kind, kind);
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.failActivation({domain, code, description});
        QCOMPARE(f.controller->status().kind(), kind);
        QCOMPARE(f.controller->status().message(), kind == Kind::Failed ? description : QString());
        QCOMPARE(
            f.log.lines.last(), u"error: System extension activation failed: "_s + description);
    }

    void failureAfterTheProgramWasMovedAsksToInstall()
    {
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.mainBundle.path = "/tmp/Zorvane.app";
        f.failActivation(brokenDisk);
        QCOMPARE(f.controller->status(), FilterStatus(Kind::InstallationRequired));
    }

    void finishAfterRebootFailsAndLeavesTheRulesPending()
    {
        ControllerFixture f;
        f.controller->requestActivation({testKey(u"pending"_s)}, {});
        f.finishActivation(platform::ActivationResult::WillCompleteAfterReboot);
        QCOMPARE(f.controller->status(),
            FilterStatus::failed(u"Restart your Mac to finish installing the extension."_s));
        QCOMPARE(f.manager.loads, 0);
        f.controller->disableFilter();
        f.scheduler.settle();
        QCOMPARE(f.storedKeys(), QStringList{testKey(u"pending"_s)});
    }

    void unknownResultFails()
    {
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.finishActivation(platform::ActivationResult(7));
        QCOMPARE(f.controller->status(),
            FilterStatus::failed(u"The extension installation finished with an unknown result."_s));
    }

    void finishWithoutPendingRulesWritesEmptyListsEnabled()
    {
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.finishActivation();
        QCOMPARE(f.storedKeys(), QStringList());
        QCOMPARE(f.storedPaths(), QStringList());
        QVERIFY(f.manager.stored.enabled);
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Enabled));
    }

    void statusStaysUntilTheWriteAfterAnActivationEnds()
    {
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.manager.holdAnswers = true;
        f.finishActivation();
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Activating));
        QCOMPARE(f.log.lines.last(), u"System extension activation finished"_s);
    }

    void replacesAnInstalledExtensionAtOnce()
    {
        ControllerFixture f;
        QCOMPARE(f.controller->actionForReplacingExtension(), platform::ReplacementAction::Replace);
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Inactive));
    }

    void extensionOfABundleWithoutIdentifierHasTheFallbackName()
    {
        ControllerFixture f;
        f.mainBundle.bundleIdentifier = std::nullopt;
        f.controller->requestActivation({}, {});
        QCOMPARE(f.extensions.submitted, QStringList{u"com.example.Zorvane.FilterExtension"_s});
    }

    void callbacksReachTheControllerOnlyOnTheMainThread()
    {
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.extensions.delegate()->requestNeedsUserApproval();
        QCOMPARE(f.controller->status(), FilterStatus(Kind::Activating));
        f.scheduler.settle();
        QCOMPARE(f.controller->status(), FilterStatus(Kind::AwaitingApproval));
    }

    void callbacksForAReleasedControllerAreDropped()
    {
        ControllerFixture f;
        f.controller->requestActivation({}, {});
        f.extensions.delegate()->requestDidFinish(platform::ActivationResult::Completed);
        f.controller.reset();
        f.scheduler.settle();
        QCOMPARE(f.manager.loads, 0);
        QVERIFY(!f.extensions.delegate());
    }
};

QTEST_GUILESS_MAIN(TestFilterActivation)
#include "tst_filter_activation.moc"
