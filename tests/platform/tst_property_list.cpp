#include "platform/simulated/property_list.h"
#include "platform/simulated/property_list_limits.h"

#include <QDateTime>
#include <QStringEncoder>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;

namespace
{

QVariant readXml(const QByteArray &content)
{
    return readPropertyList("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                            "<plist version=\"1.0\">"
        + content + "</plist>\n");
}

QByteArray bigEndian(quint64 value, int size)
{
    QByteArray bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes.append(char(value >> shift));
    return bytes;
}

/** A binary property list of the given raw objects, the first one the root; references take two
 * bytes. */
QByteArray binary(const QByteArrayList &objects)
{
    QByteArray bytes("bplist00");
    QByteArray table;
    for (const QByteArray &object : objects) {
        table.append(bigEndian(quint64(bytes.size()), 4));
        bytes.append(object);
    }
    const auto tableStart = quint64(bytes.size());
    bytes.append(table);
    bytes.append(QByteArray(6, 0) + char(4) + char(2));
    bytes.append(
        bigEndian(quint64(objects.size()), 8) + bigEndian(0, 8) + bigEndian(tableStart, 8));
    return bytes;
}

QByteArray arrayOf(std::initializer_list<int> references)
{
    QByteArray object(1, char(0xA0 | references.size()));
    for (const int reference : references)
        object.append(bigEndian(quint64(reference), 2));
    return object;
}

} // namespace

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
            {0xFFEFFFFFFFFFFFFFu, 0x7FEFFFFFFFFFFFFFu, 0x7FF8000000000000u, 0xC1CA928000000000u})
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

    void textFormsAreRead_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVariant>("expected");
        const auto row = [](const char *name, const QByteArray &text, const QVariant &expected) {
            QTest::newRow(name) << text << expected;
        };
        const QVariantMap x{{u"CFBundleIdentifier"_s, u"x"_s}};
        row("dictionary", "{ CFBundleIdentifier = \"x\"; }", x);
        row("strings table", "/* c */ \"CFBundleIdentifier\" = \"x\"; // end", x);
        row("bare key and value", "CFBundleIdentifier = x;", x);
        row("single quotes", "'CFBundleIdentifier' = 'x';", x);
        row("key alone", "Name;", QVariantMap{{u"Name"_s, u"Name"_s}});
        row("escapes", "\"a\" = \"\\\"\\\\\\n\\t\\U00e9\\101\\q\";",
            QVariantMap{{u"a"_s,
                u"\"\\\n\té"
                "Aq"_s}});
        row("surrogates by escapes", "\"a\" = \"\\Ud83d\\Ude00\";",
            QVariantMap{{u"a"_s, u"\U0001F600"_s}});
        row("array", "( a, b, )", QVariantList{u"a"_s, u"b"_s});
        row("empty array", "()", QVariantList());
        row("data", "<0aF f 10>", QByteArray("\x0A\xFF\x10"));
        row("numbers stay texts", "{ a = 5; }", QVariantMap{{u"a"_s, u"5"_s}});
        row("text alone", "hello", u"hello"_s);
        row("nested", "{a={b=(c,<>);};}",
            QVariantMap{{u"a"_s, QVariantMap{{u"b"_s, QVariantList{u"c"_s, QByteArray("")}}}}});
        row("nothing", "", QVariantMap());
        row("comment alone", "// c", QVariantMap());
        row("missing semicolon", "{ a = b }", QVariant());
        row("missing brace", "{ a = b;", QVariant());
        row("surplus brace", "{ a = b; } }", QVariant());
        row("open comment", "a = b; /* c", QVariant());
        row("open quote", "\"a", QVariant());
        row("backslash at the end", "\"a\\", QVariant());
        row("odd data", "<abc>", QVariant());
        row("open data", "<ab", QVariant());
        row("strange data", "<xy>", QVariant());
        row("two values", "a b", QVariant());
        row("missing comma", "(a b)", QVariant());
        row("no key", "= a;", QVariant());
        row("not UTF-8", "\"\xFF\" = \"x\";", QVariant());
    }

    void textFormsAreRead()
    {
        QFETCH(QByteArray, text);
        QFETCH(QVariant, expected);
        QCOMPARE(readPropertyList(text), expected);
    }

    void stringsTablesComeInEveryEncoding_data()
    {
        QTest::addColumn<QStringConverter::Encoding>("encoding");
        QTest::addColumn<bool>("marked");
        for (const bool marked : {false, true}) {
            QTest::addRow("UTF-8 %d", marked) << QStringConverter::Utf8 << marked;
            QTest::addRow("UTF-16LE %d", marked) << QStringConverter::Utf16LE << marked;
            QTest::addRow("UTF-16BE %d", marked) << QStringConverter::Utf16BE << marked;
        }
    }

    void stringsTablesComeInEveryEncoding()
    {
        QFETCH(QStringConverter::Encoding, encoding);
        QFETCH(bool, marked);
        QStringEncoder encode(
            encoding, marked ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
        const QByteArray bytes = encode(u"\"CFBundleName\" = \"Größe\";"_s);
        QCOMPARE(readPropertyList(bytes), QVariant(QVariantMap{{u"CFBundleName"_s, u"Größe"_s}}));
    }

    void brokenXmlIsNoPropertyList_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("open element") << QByteArray("<dict>");
        QTest::newRow("unknown element") << QByteArray("<object/>");
        QTest::newRow("key without value") << QByteArray("<dict><key>a</key></dict></dict>");
        QTest::newRow("entity") << QByteArray("<string>&other;</string>");
        QTest::newRow("no month") << QByteArray("<date>2020-99-03T04:05:06Z</date>");
        QTest::newRow("no date") << QByteArray("<date>aaaaaaaaaaaaaaaaaaaa</date>");
        QTest::newRow("attribute") << QByteArray("<dict a='>'/>");
        QTest::newRow("instruction") << QByteArray("<?a \" ?><dict/>");
    }

    void brokenXmlIsNoPropertyList()
    {
        QFETCH(QByteArray, content);
        QVERIFY(!readXml(content).isValid());
    }

    void ownEntitiesAreRefused()
    {
        QVERIFY(!readPropertyList("<?xml version='1.0'?><!DOCTYPE plist [<!ENTITY a 'b'>]>"
                                  "<plist><string>&a;</string></plist>")
                     .isValid());
    }

    void depthIsLimited_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<bool>("readable");
        QTest::newRow("deep") << 500 << true;
        QTest::newRow("too deep") << 520 << false;
        QTest::newRow("far too deep") << 200000 << false;
    }

    void depthIsLimited()
    {
        QFETCH(int, depth);
        QFETCH(bool, readable);
        const QByteArray xml
            = QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth);
        QCOMPARE(readXml(xml).isValid(), readable);
        const QByteArray text = QByteArray("(").repeated(depth) + QByteArray(")").repeated(depth);
        QCOMPARE(readPropertyList(text).isValid(), readable);
        QByteArrayList objects;
        for (int i = 1; i < qMin(depth, 60000); ++i)
            objects.append(arrayOf({i}));
        objects.append(arrayOf({}));
        QCOMPARE(readPropertyList(binary(objects)).isValid(), readable);
    }

    void aValueThatHoldsItselfIsRefused()
    {
        QVERIFY(!readPropertyList(binary({arrayOf({0})})).isValid());
        QVERIFY(!readPropertyList(binary({arrayOf({1}), arrayOf({0})})).isValid());
    }

    void sharedPartsMayNotGrowWithoutBound()
    {
        QByteArrayList doubling;
        for (int i = 1; i < 40; ++i)
            doubling.append(arrayOf({i, i}));
        doubling.append("Qa");
        QVERIFY(!readPropertyList(binary(doubling)).isValid());

        const QByteArray long4MiB = "\x5F\x12" + bigEndian(4u << 20, 4) + QByteArray(4 << 20, 'a');
        QByteArray uses("\xAF\x11" + bigEndian(1000, 2) + bigEndian(1, 2).repeated(1000));
        QVERIFY(!readPropertyList(binary({uses, long4MiB})).isValid());
    }

    void damagedBinaryIsNoPropertyList_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("header alone") << QByteArray("bplist00");
        QTest::newRow("no object") << binary({});
        QTest::newRow("text past the end") << binary({"\x5F\x10\xFF"
                                                      "a"});
        QTest::newRow("huge count") << binary({"\x5F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"});
        QTest::newRow("huge array") << binary({"\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"});
        QTest::newRow("huge dictionary") << binary({"\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"});
        QTest::newRow("count of no kind") << binary({"\x5F\x51"
                                                     "aaaa"});
        QTest::newRow("unknown object") << binary({arrayOf({7})});
        QTest::newRow("unknown kind") << binary({"\x70"});
        QTest::newRow("zero in a key")
            << binary({"\xD1" + bigEndian(0x00010002, 4), "\x62" + bigEndian(0x00610000, 4), "Qa"});
        QTest::newRow("number as key") << binary({"\xD1" + bigEndian(0x00010001, 4), "\x10\x01"});
    }

    void damagedBinaryIsNoPropertyList()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!readPropertyList(bytes).isValid());
    }

    void everyTruncationIsRead()
    {
        const QByteArray bytes = writePropertyList({{u"a"_s, QVariantList{u"b"_s, 1LL, 2.0}},
            {u"c"_s, QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC)}});
        for (qsizetype size = 0; size < bytes.size(); ++size)
            QVERIFY(readPropertyList(bytes.first(size)).toMap().isEmpty());
    }

    void textThatIsTooLongIsNotRead()
    {
        QVERIFY(!readPropertyList(QByteArray(propertyListSizeLimit + 1, ' ')).isValid());
    }
};

QTEST_APPLESS_MAIN(TestPropertyList)
#include "tst_property_list.moc"
