#include "platform/simulated/property_list.h"
#include "tests/platform/property_list_bytes.h"

#include <QDateTime>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using namespace zorvane::tests;

class TestPropertyList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTypeOfXmlHasItsVariant()
    {
        const QVariantMap map
            = readXml("<dict><key>text</key><string>a &amp; \xC3\xBC</string>"
                      "<key>data</key><data>AAEC</data><key>yes</key><true/><key>no</key><false/>"
                      "<key>whole</key><integer>-5</integer><key>real</key><real>2.5</real>"
                      "<key>date</key><date>2020-02-03T04:05:06Z</date>"
                      "<key>list</key><array><string>x</string><dict/></array></dict>")
                  .toMap();
        QCOMPARE(map.value(u"text"_s), QVariant(u"a & ü"_s));
        QCOMPARE(map.value(u"data"_s), QVariant(QByteArray("\0\1\2", 3)));
        QCOMPARE(map.value(u"yes"_s), QVariant(true));
        QCOMPARE(map.value(u"no"_s), QVariant(false));
        QCOMPARE(map.value(u"whole"_s), QVariant(qlonglong(-5)));
        QCOMPARE(map.value(u"real"_s), QVariant(2.5));
        QCOMPARE(
            map.value(u"date"_s), QVariant(QDateTime(QDate(2020, 2, 3), QTime(4, 5, 6), Qt::UTC)));
        QCOMPARE(map.value(u"list"_s), QVariant(QVariantList{u"x"_s, QVariantMap()}));
    }

    void whiteSpaceMaySurroundAPropertyList_data()
    {
        QTest::addColumn<QByteArray>("list");
        QTest::newRow("XML") << QByteArray(
            "<?xml version=\"1.0\"?><plist><dict><key>a</key><string>b</string></dict></plist>");
        QTest::newRow("without declaration")
            << QByteArray("<plist><dict><key>a</key><string>b</string></dict></plist>");
        QTest::newRow("text") << QByteArray("{a=b;}");
    }

    void whiteSpaceMaySurroundAPropertyList()
    {
        QFETCH(QByteArray, list);
        const QVariant expected = QVariantMap{{u"a"_s, u"b"_s}};
        QCOMPARE(readPropertyList("\n \t" + list + "\r\n"), expected);
        QCOMPARE(readPropertyList("\xEF\xBB\xBF\n" + list), expected);
    }

    void xmlThatSaysSoIsLatin1_data()
    {
        QTest::addColumn<QByteArray>("encoding");
        QTest::addColumn<bool>("isRead");
        QTest::newRow("its name") << QByteArray("ISO-8859-1") << true;
        QTest::newRow("lower case") << QByteArray("iso-8859-1") << true;
        QTest::newRow("another name") << QByteArray("latin1") << true;
        QTest::newRow("UTF-8 that it is not") << QByteArray("UTF-8") << false;
        QTest::newRow("none of ours") << QByteArray("KOI8-R") << false;
    }

    void xmlThatSaysSoIsLatin1()
    {
        QFETCH(QByteArray, encoding);
        QFETCH(bool, isRead);
        const QByteArray start = "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\n<plist>";
        const QVariant read = readPropertyList(start
            + "<string>Gr\xF6\xDF"
              "e</string></plist>");
        QCOMPARE(read, isRead ? QVariant(u"Größe"_s) : QVariant());
        // UTF-8 comes first, whatever is said.
        QCOMPARE(readPropertyList(start + "<string>Größe</string></plist>"), QVariant(u"Größe"_s));
    }

    void whatIsWrittenIsReadBack()
    {
        const QVariantMap map{
            {u"text"_s, u"grüße \U0001F600"_s},
            {u"empty"_s, u""_s},
            {u"data"_s, QByteArray("\0\xFF", 2)},
            {u"noData"_s, QByteArray("")},
            {u"yes"_s, true},
            {u"no"_s, false},
            {u"negative"_s, qlonglong(-7)},
            {u"large"_s, std::numeric_limits<qlonglong>::max()},
            {u"real"_s, 0.1},
            {u"date"_s, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 250), Qt::UTC)},
            {u"before"_s, QDateTime(QDate(1999, 1, 2), QTime(3, 4, 5, 250), Qt::UTC)},
            {u"list"_s, QVariantList{u"a"_s, 1LL, QVariantMap{{u"k"_s, u"v"_s}}}},
            {u"ключ"_s, QVariantList()},
        };
        QCOMPARE(readPropertyList(writePropertyList(map)), QVariant(map));
    }

    void anEmptyDictionaryIsWrittenAndReadBack()
    {
        QCOMPARE(readPropertyList(writePropertyList({})), QVariant(QVariantMap()));
    }

    void valuesOfOtherTypesAreNotWritten()
    {
        const QVariantMap map{{u"kept"_s, true}, {u"left"_s, QVariant()}};
        QCOMPARE(
            readPropertyList(writePropertyList(map)), QVariant(QVariantMap{{u"kept"_s, true}}));
    }

    void aDateKeepsItsMilliseconds_data()
    {
        QTest::addColumn<qint64>("milliseconds");
        // Since 1970: the format counts from 2001, in seconds that are no whole thousandths.
        for (const qint64 milliseconds : {qint64(1'767'323'045'001), qint64(1'767'323'045'483),
                 qint64(1'767'323'045'999), qint64(900'000'000'484), qint64(-1'169'174'300'517)})
            QTest::addRow("%lld", milliseconds) << milliseconds;
    }

    void aDateKeepsItsMilliseconds()
    {
        QFETCH(qint64, milliseconds);
        const QVariantMap map{{u"d"_s, QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC)}};
        QCOMPARE(readPropertyList(writePropertyList(map)), QVariant(map));
    }

    void aDateBeforeAllThatCanBeHeldIsTheEarliest()
    {
        // -6.1e146 seconds
        const QByteArray bytes = "bplist00\xd1\x01\x02Qd"
                                 "\x33\xde\xc1\x41\xca\x92\x80\x00\x00"
                                 "\x08\x0b\x0d"_ba
            + QByteArray(6, '\0') + "\x01\x01"_ba + QByteArray(7, '\0') + "\x03"_ba
            + QByteArray(8, '\0') + QByteArray(7, '\0') + "\x16"_ba;
        const QDateTime date = readPropertyList(bytes).toMap().value(u"d"_s).toDateTime();
        QCOMPARE(date, QDateTime(QDate(1932, 12, 13), QTime(20, 45, 52), Qt::UTC));
    }

    void datesBeyondTheFormatAreKeptInRange()
    {
        const QVariantMap map{{u"d"_s, QDateTime(QDate(2200, 1, 1), QTime(0, 0), Qt::UTC)}};
        const QDateTime date
            = readPropertyList(writePropertyList(map)).toMap().value(u"d"_s).toDateTime();
        QCOMPARE(date.date().year(), 2069);
    }

    void datesOfNoCalendarAreRead()
    {
        for (const quint64 bits :
            {0xFFEFFFFFFFFFFFFFU, 0x7FEFFFFFFFFFFFFFU, 0x7FF8000000000000U, 0xC1CA928000000000U})
            QVERIFY(readPropertyList(binary({"\x33" + bigEndian(bits, 8)})).isValid());
    }

    void repeatedKeysAreTaken_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("XML") << QByteArray("<plist><dict><key>a</key><string>1</string>"
                                           "<key>a</key><string>2</string></dict></plist>");
        QTest::newRow("text") << QByteArray("{a=1;a=2;}");
        QTest::newRow("binary") << binary(
            {QByteArray("\xD2") + bigEndian(0x0001000100020003, 8), "Qa", "Q1", "Q2"});
    }

    void repeatedKeysAreTaken()
    {
        QFETCH(QByteArray, bytes);
        const QVariantMap map = readPropertyList(bytes).toMap();
        QCOMPARE(map.size(), 1);
        QVERIFY(map.value(u"a"_s) == u"1"_s || map.value(u"a"_s) == u"2"_s);
    }
};

QTEST_APPLESS_MAIN(TestPropertyList)
#include "tst_property_list.moc"
