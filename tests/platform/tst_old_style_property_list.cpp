#include "platform/simulated/property_list.h"

#include <QStringEncoder>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;

class TestOldStylePropertyList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
            const char *const name = marked ? "marked" : "not marked";
            QTest::addRow("UTF-8, %s", name) << QStringConverter::Utf8 << marked;
            QTest::addRow("UTF-16LE, %s", name) << QStringConverter::Utf16LE << marked;
            QTest::addRow("UTF-16BE, %s", name) << QStringConverter::Utf16BE << marked;
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
};

QTEST_APPLESS_MAIN(TestOldStylePropertyList)
#include "tst_old_style_property_list.moc"
