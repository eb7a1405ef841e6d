#include "tests/platform/started_program.h"
#include "tests/platform/state_folder.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using zorvane::tests::StartedProgram;
using zorvane::tests::StateFolder;

namespace
{

const QString program = QStringLiteral(ZORVANE_PROGRAM);

/** Reads on until a line on standard error matches as a whole; empty if none does. */
QString errorLineThatMatches(StartedProgram &started, const QString &pattern)
{
    const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
    for (;;) {
        auto line = QString::fromUtf8(started.errorLine());
        if (line.isEmpty() || whole.match(line).hasMatch())
            return line;
    }
}

const QString refreshed = uR"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} default )"
                          uR"(dev\.kestrelworks\.Zorvane:SystemExtension: )"
                          uR"(Filter status refreshed: enabled=false)"_s;

} // namespace

/** The whole program, as the system starts it; what is in its window is tested elsewhere. */
class TestProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itsLogGoesToStandardErrorWithLevelSubsystemAndCategory()
    {
        const StateFolder folder;
        StartedProgram started(program, folder.filePath(QString()));
        QVERIFY(!errorLineThatMatches(started, refreshed).isEmpty());
    }

    void aSecondStartEndsWellAndTheFirstGoesOn()
    {
        const StateFolder folder;
        StartedProgram first(program, folder.filePath(QString()));
        QVERIFY(!errorLineThatMatches(first, refreshed).isEmpty());
        StartedProgram second(program, folder.filePath(QString()));
        QCOMPARE(second.exitStatus(), 0);
        QVERIFY2(!second.errors().contains("Filter status"), "it must not have worked beside it");
        QVERIFY(first.isRunning());
    }

    void argumentsMeanNothingToIt()
    {
        const StateFolder folder;
        StartedProgram started(program, folder.filePath(QString()), {},
            {u"--help"_s, u"--version"_s, u"/Applications/Tool.app"_s});
        QVERIFY(!errorLineThatMatches(started, refreshed).isEmpty());
        QVERIFY(started.isRunning());
    }

    void withoutAFolderForItsStateItSaysSoAndEnds()
    {
        const StateFolder folder;
        folder.write(u"file"_s, "x");
        StartedProgram started(program, folder.filePath(u"file"_s));
        QCOMPARE(started.exitStatus(), 1);
        QVERIFY(started.errors().contains("zorvane cannot work with its state folder"));
    }
};

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
