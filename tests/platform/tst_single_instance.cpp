#include "platform/simulated/single_instance.h"
#include "started_program.h"
#include "state_folder.h"

#include <csignal>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using zorvane::platform::SingleInstance;
using zorvane::tests::StateFolder;
namespace tests = zorvane::tests;

namespace
{

using Outcome = SingleInstance::Outcome;

/** One start of a program that holds the instance and says what it is told. */
class Start final : public tests::StartedProgram
{
public:
    explicit Start(const QString &folder, const QString &token = {})
        : StartedProgram(QStringLiteral(INSTANCE_HOLDER), folder, token)
    {
    }
};

} // namespace

class TestSingleInstance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSecondStartBringsTheFirstForwardAndEndsWell()
    {
        const StateFolder folder;
        Start first(folder.filePath(QString()));
        QCOMPARE(first.line(), "first");
        Start second(folder.filePath(QString()));
        QCOMPARE(second.exitStatus(), 0);
        QCOMPARE(first.line(), "forward");
        Start third(folder.filePath(QString()), u"token-3"_s);
        QCOMPARE(third.exitStatus(), 0);
        QCOMPARE(first.line(), "forward token-3");
    }

    void programsOfTwoFoldersRunSideBySide()
    {
        const StateFolder one;
        const StateFolder other;
        Start first(one.filePath(QString()));
        Start second(other.filePath(QString()));
        QCOMPARE(first.line(), "first");
        QCOMPARE(second.line(), "first");
    }

    void aProgramThatWasKilledIsNotInTheWay()
    {
        const StateFolder folder;
        {
            Start first(folder.filePath(QString()));
            QCOMPARE(first.line(), "first");
        } // killed; its socket's file stays
        QVERIFY(folder.hasFile(u"zorvane.socket"_s));
        Start next(folder.filePath(QString()));
        QCOMPARE(next.line(), "first");
        Start second(folder.filePath(QString()));
        QCOMPARE(second.exitStatus(), 0);
        QCOMPARE(next.line(), "forward");
    }

    void manyStartsAtOnceLeaveOneProgram()
    {
        constexpr int count = 8;
        const StateFolder folder;
        std::vector<std::unique_ptr<Start>> starts;
        starts.reserve(count);
        for (int i = 0; i < count; ++i)
            starts.push_back(std::make_unique<Start>(folder.filePath(QString())));
        int firsts = 0;
        for (const auto &start : starts) {
            if (start->line() == "first")
                ++firsts;
            else
                QCOMPARE(start->exitStatus(), 0);
        }
        QCOMPARE(firsts, 1);
    }

    void aFirstThatHangsKeepsItsStateAndTheSecondEnds()
    {
        const StateFolder folder;
        Start first(folder.filePath(QString()));
        QCOMPARE(first.line(), "first");
        QVERIFY(first.signal(SIGSTOP));
        Start second(folder.filePath(QString()));
        QCOMPARE(second.exitStatus(), 0);
        QVERIFY(second.errors().contains("already runs and does not answer"));
        QVERIFY(first.signal(SIGCONT));
        QCOMPARE(first.line(), "forward");
    }

    void theFoldersPathMayBeLongerThanASocketsAddress()
    {
        const StateFolder folder;
        const QString deep = folder.filePath(QString(150, u'd') + u"/"_s + QString(150, u'e'));
        Start first(deep);
        QCOMPARE(first.line(), "first");
        Start second(deep, u"t"_s);
        QCOMPARE(second.exitStatus(), 0);
        QCOMPARE(first.line(), "forward t");
    }

    void aFileInTheFoldersPlaceRefusesTheStart()
    {
        const StateFolder folder;
        folder.write(u"file"_s, "x");
        Start start(folder.filePath(u"file"_s));
        QCOMPARE(start.exitStatus(), 1);
        const QByteArray errors = start.errors();
        QVERIFY2(errors.contains("zorvane cannot work with its state folder"), errors);
        QVERIFY2(errors.contains(folder.filePath(u"file"_s).toUtf8()), errors);
        QVERIFY2(errors.contains("not a folder"), errors);
    }

    void aFolderThatCannotBeMadeRefusesTheStart()
    {
        Start start(u"/proc/zorvane"_s);
        QCOMPARE(start.exitStatus(), 1);
        QVERIFY(start.errors().contains("/proc/zorvane: "));
    }

    void whatAStrangerSaysDoesNoHarm()
    {
        const StateFolder folder;
        LockedInstance instance(folder.path(), u"zorvane"_s);
        QCOMPARE(instance.acquire(), Outcome::First);
        int calls = 0;
        instance.onBringForward([&calls] { ++calls; });
        const QString address = folder.filePath(u"zorvane.socket"_s);

        QLocalSocket silent;
        silent.connectToServer(address);
        QVERIFY(silent.waitForConnected());
        silent.disconnectFromServer();

        QLocalSocket endless;
        endless.connectToServer(address);
        QVERIFY(endless.waitForConnected());
        endless.write(QByteArray(100'000, 'x'));
        QTRY_COMPARE(endless.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(calls, 0);
    }

    void theLockEndsWithItsHolder()
    {
        const StateFolder folder;
        for (int i = 0; i < 2; ++i) {
            LockedInstance instance(folder.path(), u"zorvane"_s);
            QCOMPARE(instance.acquire(), Outcome::First);
        }
        QVERIFY(!folder.hasFile(u"zorvane.socket"_s));
    }

    void aStartWhileTheFirstEndsWaitsForThatAndTakesItsPlace()
    {
        const StateFolder folder;
        auto ending = std::make_unique<LockedInstance>(folder.path(), u"zorvane"_s);
        QCOMPARE(ending->acquire(), Outcome::First);
        ending->onBringForward(nullptr);
        Start next(folder.filePath(QString()));
        QVERIFY(!next.saysSomethingWithin(500));
        ending.reset();
        QCOMPARE(next.line(), "first");
    }

    void theLockIsNotHandedOnToProgramsThatItsHolderStarts()
    {
        const StateFolder folder;
        QProcess child;
        {
            LockedInstance instance(folder.path(), u"zorvane"_s);
            QCOMPARE(instance.acquire(), Outcome::First);
            child.start(u"sleep"_s, {u"60"_s});
            QVERIFY(child.waitForStarted());
        }
        LockedInstance next(folder.path(), u"zorvane"_s);
        QCOMPARE(next.acquire(), Outcome::First);
        child.kill();
        QVERIFY(child.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(TestSingleInstance)
#include "tst_single_instance.moc"
