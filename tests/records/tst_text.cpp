#include "app/records/text.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::records;

class TestText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trimmingRemovesBlanksAtBothEnds_data()
    {
        QTest::addColumn<uint>("first");
        QTest::addColumn<uint>("last");

        QTest::newRow("tab to carriage return") << 0x09U << 0x0DU;
        QTest::newRow("space") << 0x20U << 0x20U;
        QTest::newRow("next line") << 0x85U << 0x85U;
        QTest::newRow("no-break space") << 0xA0U << 0xA0U;
        QTest::newRow("ogham space mark") << 0x1680U << 0x1680U;
        QTest::newRow("quads to zero-width space") << 0x2000U << 0x200BU;
        QTest::newRow("line and paragraph separators") << 0x2028U << 0x2029U;
        QTest::newRow("narrow no-break space") << 0x202FU << 0x202FU;
        QTest::newRow("medium mathematical space") << 0x205FU << 0x205FU;
        QTest::newRow("ideographic space") << 0x3000U << 0x3000U;
    }

    void trimmingRemovesBlanksAtBothEnds()
    {
        QFETCH(uint, first);
        QFETCH(uint, last);
        for (uint code = first; code <= last; ++code) {
            const QChar blank(code);
            QCOMPARE(trimmed(QString(blank) + u"A B"_s + blank + blank), u"A B"_s);
        }
    }

    void trimmingKeepsOtherInvisibleCharacters()
    {
        for (const uint code :
            {0x00U, 0x08U, 0x1CU, 0x1FU, 0x7FU, 0x180EU, 0x200CU, 0x200DU, 0x2060U, 0xFEFFU}) {
            const QString text = QChar(code) + u"T"_s + QChar(code);
            QCOMPARE(trimmed(text), text);
        }
    }

    void trimmingTakesABlankFromItsCombiningMark() { QCOMPARE(trimmed(u" \u0301T"), u"\u0301T"_s); }

    void trimmingBlanksAloneLeavesNothing()
    {
        QCOMPARE(trimmed(u" \t\n"), QString());
        QVERIFY(!normalizedTeam(u" \t\n"_s));
        QVERIFY(!normalizedTeam(std::nullopt));
    }

    void base64IsReadStrictly_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("bytes");

        QTest::newRow("nothing") << QByteArray() << QByteArray();
        QTest::newRow("three bytes") << QByteArray("QUJD") << QByteArray("ABC");
        QTest::newRow("two bytes") << QByteArray("QUI=") << QByteArray("AB");
        QTest::newRow("one byte") << QByteArray("QQ==") << QByteArray("A");
        QTest::newRow("spare bits") << QByteArray("QUJ=") << QByteArray("AB");
        QTest::newRow("whole alphabet's end") << QByteArray("+/+/") << QByteArray("\xFB\xFF\xBF");
    }

    void base64IsReadStrictly()
    {
        QFETCH(QByteArray, text);
        const auto bytes = decodedBase64(text);
        QVERIFY(bytes);
        QTEST(*bytes, "bytes");
    }

    void base64RefusesEverythingElse()
    {
        for (const QByteArray text : {"QUI", "QQ", "Q", "AAAAA", "QUJD\n", " QUJD", "QU JD", "-_-_",
                 "QQ==QUJD", "QUJD\xC3\xA9", "ABC$", "===", "====", "=",
                 "Q===", "QUJD=", "QUJD====", "QUI==", "Q=I=", "QQ=A"})
            QVERIFY2(!decodedBase64(text), text.constData());
    }

    void utf8IsReadStrictly()
    {
        QCOMPARE(decodedUtf8("é😀"), std::optional(u"é😀"_s));
        QCOMPARE(decodedUtf8(QByteArrayView("a\0b", 3)).value_or(QString()).size(), 3);
        QCOMPARE(decodedUtf8(""), std::optional(QString()));
        QCOMPARE(decodedUtf8("\xEF\xBB\xBFz"), std::optional(u"\uFEFFz"_s));
        for (const QByteArrayView bytes : {QByteArrayView("a\xFFz"), QByteArrayView("\xED\xA0\x80"),
                 QByteArrayView("\xC3"), QByteArrayView("\xC0\x80")})
            QVERIFY(!decodedUtf8(bytes));
    }

    void orderIsByCodePoint_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");

        QTest::newRow("capitals first") << u"B"_s << u"a"_s;
        QTest::newRow("full-width before emoji") << u"～"_s << u"😀"_s;
        QTest::newRow("accent after z") << u"z"_s << u"\u00E9"_s;
        QTest::newRow("prefix first") << u"a"_s << u"aa"_s;
        QTest::newRow("empty first") << QString() << u"a"_s;
        QTest::newRow("second half of a pair") << u"😀"_s << u"😁"_s;
        QTest::newRow("after a common pair") << u"😀a"_s << u"😀😀"_s;
    }

    void orderIsByCodePoint()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QVERIFY(precedesByCodePoint(first, second));
        QVERIFY(!precedesByCodePoint(second, first));
        QVERIFY(!precedesByCodePoint(first, first));
    }
};

QTEST_APPLESS_MAIN(TestText)
#include "tst_text.moc"
