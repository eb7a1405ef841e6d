#include "updates/version_comparison.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;

class TestVersionComparison : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ordersVersions_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<int>("order");

        struct Row {
            const char16_t *a;
            const char16_t *b;
            int order;
        };
        const Row rows[] = {
            {u"1.10", u"1.9", 1},
            {u"2.0", u"1.9.3", 1},
            {u"1.0", u"1", 1},
            {u"1.", u"1", 1},
            {u"01.2", u"1.2", 0},
            {u"1.02", u"1.2", 0},
            {u"1.0", u"1.00", 0},
            {u"1.002", u"1.01", 1},
            {u"2.0b10", u"2.0b2", 1},
            {u"2.0b1", u"2.0", 1},
            {u"2.0.1", u"2.0-beta", 1},
            {u"2.0a", u"2.0B", 1},
            {u"1a", u"1.", 1},
            {u"1.0 ", u"1.0", 1},
            {u"1.0", u" 1.0", 1},
            {u"v1.0", u"1.0", 1},
            {u"", u"", 0},
            {u"0", u"", 1},
            {u"10a", u"9z", 1},
            {u"1.0", u"1,0", 1},
            {u"0", u"00", 0},
            {u"18446744073709551615", u"18446744073709551614", 1},
            {u"9223372036854775808", u"9223372036854775807", 1},
            {u"18446744073709551616", u"1", 1},
            {u"18446744073709551616", u"0", 1},
            {u"99999999999999999999", u"9999999999999999999", 1},
            {u"20250101000000", u"20241231235959", 1},
            {u"1.\u0665", u"1.4", 1},
            {u"1.\u00E9", u"1.e\u0301", 0},
            {u"1", u"+1", 1},
            {u"1e3", u"1d9", 1},
            {u"1.\U0001F600", u"1.\uFF11", 1},
        };
        for (const Row &row : rows) {
            const QString a = QString::fromUtf16(row.a);
            const QString b = QString::fromUtf16(row.b);
            QTest::addRow("'%s' and '%s'", qUtf8Printable(a), qUtf8Printable(b))
                << a << b << row.order;
        }
    }

    void ordersVersions()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(int, order);
        QCOMPARE(updates::compareNumerically(a, b), order);
        QCOMPARE(updates::compareNumerically(b, a), -order);
    }

    void readsBuildNumbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("number");
        const auto row = [](const QString &text, qint64 number) {
            QTest::addRow("'%s'", qUtf8Printable(text)) << text << number;
        };
        row(u"57"_s, 57);
        row(u"057"_s, 57);
        row(u"+57"_s, 57);
        row(u"-57"_s, -57);
        row(u"-0"_s, 0);
        row(u"9223372036854775807"_s, std::numeric_limits<qint64>::max());
        row(u"-9223372036854775808"_s, std::numeric_limits<qint64>::min());
        for (const QString &unparsable : {u" 57"_s, u"57 "_s, u"57\n"_s, u""_s, u"+"_s, u"-"_s,
                 u"--5"_s, u"+ 5"_s, u"0x39"_s, u"1e2"_s, u"5.0"_s, u"1,000"_s, u"\u0665\u0667"_s,
                 u"\uFF15\uFF17"_s, u"abc"_s, u"9223372036854775808"_s, u"-9223372036854775809"_s})
            row(unparsable, 0);
    }

    void readsBuildNumbers()
    {
        QFETCH(QString, text);
        QTEST(updates::buildNumber(text), "number");
    }
};

QTEST_GUILESS_MAIN(TestVersionComparison)
#include "tst_version_comparison.moc"
