#include "platform/simulated/property_list_limits.h"
#include "tests/platform/property_list_bytes.h"

#include <QDateTime>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using namespace zorvane::tests;

class TestPropertyListLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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

    void entitiesAreCounted()
    {
        const auto withEntities = [](qsizetype count) {
            return readXml("<string>" + QByteArray("&lt;").repeated(count) + "</string>");
        };
        QCOMPARE(withEntities(propertyListEntityLimit).toString().size(), propertyListEntityLimit);
        QVERIFY(!withEntities(propertyListEntityLimit + 1).isValid());
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

        const QByteArray long4MiB = "\x5F\x12" + bigEndian(4U << 20, 4) + QByteArray(4 << 20, 'a');
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

QTEST_APPLESS_MAIN(TestPropertyListLimits)
#include "tst_property_list_limits.moc"
