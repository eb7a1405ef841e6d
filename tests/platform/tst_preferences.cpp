#include "platform/simulated/preferences.h"
#include "platform/simulated/preferences_domain.h"
#include "platform/simulated/property_list.h"
#include "state_folder.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using zorvane::platform::Preferences;
using zorvane::tests::StateFolder;

namespace
{

const QString fileName = u"preferences/dev.kestrelworks.Zorvane.plist"_s;

QByteArray xml(const QByteArray &dictionary)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + dictionary
        + "</dict></plist>";
}

} // namespace

class TestPreferences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_folder = std::make_unique<StateFolder>();
        QVERIFY(QDir().mkdir(m_folder->filePath(u"preferences"_s)));
    }

    void everyTypeComesBackAsItWasInAnotherProgram()
    {
        const QByteArray bytes("\x00\xFF list", 7);
        const QDateTime date(QDate(2026, 3, 1), QTime(12, 30, 15), Qt::UTC);
        {
            const auto preferences = open();
            preferences->setBoolean(u"on"_s, true);
            preferences->setBoolean(u"off"_s, false);
            preferences->setData(u"bytes"_s, bytes);
            preferences->setDate(u"date"_s, date);
            preferences->setString(u"text"_s, u"Äpfel 🍏"_s);
        }
        const auto preferences = open();
        QVERIFY(preferences->boolean(u"on"_s));
        QVERIFY(!preferences->boolean(u"off"_s));
        QCOMPARE(preferences->data(u"bytes"_s), bytes);
        QCOMPARE(preferences->date(u"date"_s), date);
        QCOMPARE(preferences->string(u"text"_s), u"Äpfel 🍏"_s);
    }

    void truthIsReadAsThePlatformReadsIt_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("expected");

        QTest::newRow("true") << "<true/>"_ba << true;
        QTest::newRow("false") << "<false/>"_ba << false;
        QTest::newRow("0.5") << "<real>0.5</real>"_ba << true;
        QTest::newRow("0.0") << "<real>0</real>"_ba << false;
        QTest::newRow("1") << "<integer>1</integer>"_ba << true;
        QTest::newRow("-3") << "<integer>-3</integer>"_ba << true;
        QTest::newRow("0") << "<integer>0</integer>"_ba << false;
        QTest::newRow("text YES") << "<string>YES</string>"_ba << true;
        QTest::newRow("text true") << "<string>true</string>"_ba << true;
        QTest::newRow("text Yup") << "<string>Yup</string>"_ba << true;
        QTest::newRow("text 1") << "<string>1</string>"_ba << true;
        QTest::newRow("text blank 007") << "<string> 007</string>"_ba << true;
        QTest::newRow("text -1") << "<string>-1</string>"_ba << true;
        QTest::newRow("text +0") << "<string>+0</string>"_ba << false;
        QTest::newRow("text 000") << "<string>000</string>"_ba << false;
        QTest::newRow("text 0.5") << "<string>0.5</string>"_ba << false;
        QTest::newRow("text NO") << "<string>NO</string>"_ba << false;
        QTest::newRow("text no") << "<string>no</string>"_ba << false;
        QTest::newRow("text on") << "<string>on</string>"_ba << false;
        QTest::newRow("empty text") << "<string></string>"_ba << false;
        QTest::newRow("data") << "<data>MQ==</data>"_ba << false;
        QTest::newRow("date") << "<date>2026-03-01T12:00:00Z</date>"_ba << false;
        QTest::newRow("list") << "<array><true/></array>"_ba << false;
    }

    void truthIsReadAsThePlatformReadsIt()
    {
        QFETCH(QByteArray, value);
        QFETCH(bool, expected);
        m_folder->write(fileName, xml("<key>k</key>" + value));
        QCOMPARE(open()->boolean(u"k"_s), expected);
        QVERIFY(open()->contains(u"k"_s));
    }

    void dataDatesAndTextsAreNeverConverted()
    {
        m_folder->write(fileName,
            xml("<key>number</key><integer>5</integer><key>data</key><data>MQ==</data>"
                "<key>text</key><string>2026-03-01T12:00:00Z</string>"
                "<key>date</key><date>2026-03-01T12:00:00Z</date><key>truth</key><true/>"));
        const auto preferences = open();
        for (const QString &key : {u"number"_s, u"text"_s, u"date"_s, u"truth"_s, u"absent"_s})
            QCOMPARE(preferences->data(key), std::nullopt);
        for (const QString &key : {u"number"_s, u"text"_s, u"data"_s, u"truth"_s, u"absent"_s})
            QCOMPARE(preferences->date(key), std::nullopt);
        for (const QString &key : {u"number"_s, u"date"_s, u"data"_s, u"truth"_s, u"absent"_s})
            QCOMPARE(preferences->string(key), std::nullopt);
    }

    void whatIsSetIsSeenAtOnceAndWrittenAMomentLater()
    {
        const auto preferences = open();
        preferences->setString(u"k"_s, u"one"_s);
        QCOMPARE(preferences->string(u"k"_s), u"one"_s);
        preferences->setString(u"k"_s, u"two"_s);
        QCOMPARE(preferences->string(u"k"_s), u"two"_s);
        QTRY_COMPARE(stored().value(u"k"_s).toString(), u"two"_s);
        QCOMPARE(preferences->string(u"k"_s), u"two"_s);
    }

    void aChangeOfAnotherProgramIsSeen()
    {
        const auto mine = open();
        const auto theirs = open();
        mine->setString(u"mine"_s, u"1"_s);
        mine->synchronize();
        QCOMPARE(theirs->string(u"mine"_s), u"1"_s);
        theirs->setString(u"theirs"_s, u"2"_s);
        theirs->synchronize();
        QCOMPARE(mine->string(u"theirs"_s), u"2"_s);
        mine->setString(u"mine"_s, u"3"_s);
        mine->synchronize();
        QCOMPARE(stored(), (QVariantMap{{u"mine"_s, u"3"_s}, {u"theirs"_s, u"2"_s}}));
    }

    void keysOfOtherTypesSurviveAWrite()
    {
        m_folder->write(fileName,
            xml("<key>list</key><array><integer>1</integer><string>x</string></array>"
                "<key>half</key><real>0.5</real>"));
        open()->setBoolean(u"k"_s, true);
        QCOMPARE(stored().value(u"list"_s).toList(), (QVariantList{qlonglong(1), u"x"_s}));
        QCOMPARE(stored().value(u"half"_s).toDouble(), 0.5);
        QCOMPARE(stored().value(u"k"_s), QVariant(true));
    }

    void aDamagedFileIsReportedReadAsAbsentAndNotTouchedByReading_data()
    {
        QTest::addColumn<QByteArray>("bytes");

        QTest::newRow("no property list") << QByteArray("\0\0\0\0", 4);
        QTest::newRow("cut off") << QByteArray("bplist00\xD1\x01");
        QTest::newRow("no dictionary") << "<plist><array/></plist>"_ba;
    }

    void aDamagedFileIsReportedReadAsAbsentAndNotTouchedByReading()
    {
        QFETCH(QByteArray, bytes);
        m_folder->write(fileName, bytes);
        const auto preferences = open();
        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression(u"Zorvane\\.plist holds no dictionary"_s));
        QVERIFY(!preferences->contains(u"k"_s));
        QVERIFY(!preferences->boolean(u"k"_s)); // and not reported again
        QCOMPARE(m_folder->read(fileName), bytes);
    }

    void aDamagedFileIsKeptAsideBeforeItIsReplaced()
    {
        const QRegularExpression report(u"was damaged and is kept as .*\\.damaged-[12]$"_s);
        for (const QByteArray &bytes : {"first damage"_ba, "second damage"_ba}) {
            m_folder->write(fileName, bytes);
            QTest::ignoreMessage(QtWarningMsg, report);
            open()->setBoolean(u"k"_s, true);
            QCOMPARE(stored(), (QVariantMap{{u"k"_s, true}}));
        }
        QCOMPARE(m_folder->read(fileName + u".damaged-1"_s), "first damage");
        QCOMPARE(m_folder->read(fileName + u".damaged-2"_s), "second damage");
    }

    void aFailedWriteIsReportedKeptAndTriedAgain()
    {
        QVERIFY(QDir().mkdir(m_folder->filePath(fileName)));
        const auto preferences = open();
        const QRegularExpression report(u"cannot be written: it is not a regular file"_s);
        QTest::ignoreMessage(QtCriticalMsg, report);
        QTest::ignoreMessage(QtCriticalMsg, report);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot be read"_s));
        preferences->setBoolean(u"k"_s, true);
        preferences->synchronize();
        QVERIFY(preferences->boolean(u"k"_s));

        QVERIFY(QDir().rmdir(m_folder->filePath(fileName)));
        preferences->synchronize();
        QCOMPARE(stored(), (QVariantMap{{u"k"_s, true}}));
    }

    void ofWhatIsTooLargeTogetherOnlyTheLargestIsGivenUp()
    {
        QVERIFY(QDir().mkdir(m_folder->filePath(fileName)));
        const auto preferences = open();
        const QRegularExpression report(u"cannot be written: it is not a regular file"_s);
        for (int i = 0; i < 4; ++i)
            QTest::ignoreMessage(QtCriticalMsg, report);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot be read"_s));
        // What could not be written waits for the next write: all three are in one then.
        preferences->setBoolean(u"a"_s, true);
        preferences->setData(u"large"_s, QByteArray(propertyListSizeLimit + 1, 'x'));
        preferences->setBoolean(u"z"_s, true);
        preferences->synchronize();
        QVERIFY(QDir().rmdir(m_folder->filePath(fileName)));
        QTest::ignoreMessage(QtCriticalMsg,
            QRegularExpression(u"the value of large is too large to be read again"_s));
        preferences->setString(u"k"_s, u"later"_s);
        preferences->synchronize();
        QCOMPARE(stored(), (QVariantMap{{u"a"_s, true}, {u"k"_s, u"later"_s}, {u"z"_s, true}}));
        QVERIFY(!preferences->contains(u"large"_s));
    }

    void suitesOfOneNameSeeOneAnother()
    {
        FilePreferencesSuites suites(m_folder->system());
        const auto one = suites.open(u"group.dev.kestrelworks.Zorvane"_s);
        const auto other = suites.open(u"group.dev.kestrelworks.Zorvane"_s);
        one->setData(u"k"_s, "v");
        QCOMPARE(other->data(u"k"_s), "v");
        one->synchronize();
        QVERIFY(m_folder->hasFile(u"preferences/group.dev.kestrelworks.Zorvane.plist"_s));
        QVERIFY(!open()->contains(u"k"_s));
    }

    void aSuiteSeesWhatTheFilterExtensionWroteSinceAfterSynchronizing()
    {
        FilePreferencesSuites suites(m_folder->system());
        const auto suite = suites.open(u"group.x"_s);
        for (int i = 0; i < 5; ++i) {
            const QByteArray value = QByteArray::number(i);
            m_folder->write(u"preferences/group.x.plist"_s,
                writePropertyList({{u"discoveredNetworkProcesses.v2"_s, value}}));
            suites.open(u"group.x"_s)->synchronize();
            QCOMPARE(suite->data(u"discoveredNetworkProcesses.v2"_s), value);
        }
    }

    void aSuiteThatCannotBeIsRefused_data()
    {
        QTest::addColumn<QString>("name");

        QTest::newRow("empty") << QString();
        QTest::newRow("another folder") << u"../x"_s;
        QTest::newRow("hidden") << u".x"_s;
        QTest::newRow("too long") << QString(201, u'x');
        QTest::newRow("with a null character") << QString(QChar::Null);
        QTest::newRow("the program's own domain") << u"dev.kestrelworks.Zorvane"_s;
    }

    void aSuiteThatCannotBeIsRefused()
    {
        QFETCH(QString, name);
        FilePreferencesSuites suites(m_folder->system());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"No preferences can be named"_s));
        QVERIFY(!suites.open(name));
    }

    void filesAreForTheUserAlone()
    {
        const auto folder = m_folder->path() / "new" / "state";
        makeStandardPreferences(SimulatedSystem(folder))->setBoolean(u"k"_s, true);
        QCOMPARE(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
        QCOMPARE(std::filesystem::status(folder / "preferences" / "dev.kestrelworks.Zorvane.plist")
                     .permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    }

private:
    /** As another program opens it. */
    [[nodiscard]] std::unique_ptr<Preferences> open() const
    {
        return makeStandardPreferences(*m_folder->system());
    }

    [[nodiscard]] QVariantMap stored() const
    {
        return readPropertyList(m_folder->read(fileName)).toMap();
    }

    std::unique_ptr<StateFolder> m_folder;
};

QTEST_GUILESS_MAIN(TestPreferences)
#include "tst_preferences.moc"
