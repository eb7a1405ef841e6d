#include "app/records/paths.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::records;

class TestPaths : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standardizingIsTextual_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("standardized");

        QTest::newRow("parent at the end") << u"/a/b/.."_s << u"/a"_s;
        QTest::newRow("dot at the end") << u"/a/."_s << u"/a"_s;
        QTest::newRow("dot inside") << u"/a/./b"_s << u"/a/b"_s;
        QTest::newRow("parent of the first") << u"/a/.."_s << u"/"_s;
        QTest::newRow("parent of the root stays") << u"/.."_s << u"/.."_s;
        QTest::newRow("parents of the root stay") << u"/../../a"_s << u"/../../a"_s;
        QTest::newRow("beyond the root") << u"/a/../../b"_s << u"/../b"_s;
        QTest::newRow("repeated slash stays") << u"/a//b"_s << u"/a//b"_s;
        QTest::newRow("parent of an empty component") << u"/a//../b"_s << u"/a/b"_s;
        QTest::newRow("three dots") << u"/a/..."_s << u"/a/..."_s;
        QTest::newRow("dots and a letter") << u"/a/..b"_s << u"/a/..b"_s;
        QTest::newRow("trailing slash") << u"/a/b/../c.app/"_s << u"/a/c.app"_s;
        QTest::newRow("trailing slashes") << u"/a/c.app//"_s << u"/a/c.app"_s;
        QTest::newRow("percent sign") << u"/a%20b.app"_s << u"/a%20b.app"_s;
        QTest::newRow("percent-encoded slash") << u"/a%2Fb.app"_s << u"/a%2Fb.app"_s;
        QTest::newRow("blank") << u"/a b.app"_s << u"/a b.app"_s;
        QTest::newRow("letter case") << u"/Applications/C.APP"_s << u"/Applications/C.APP"_s;
        QTest::newRow("root") << u"/"_s << u"/"_s;
        QTest::newRow("two slashes") << u"//"_s << u"/"_s;
        QTest::newRow("nothing is looked up") << u"/proc/self/../x"_s << u"/proc/x"_s;
    }

    void standardizingIsTextual()
    {
        QFETCH(QString, path);
        QTEST(standardizedPath(path), "standardized");
    }

    void aRelativePathIsBoundToTheCurrentDirectory()
    {
        QCOMPARE(standardizedPath(u"a/../b.app"_s), QDir::currentPath() + u"/b.app"_s);
        QCOMPARE(standardizedPath(QString()), QDir::currentPath());
    }

    void partsOfTheLastComponent_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("component");
        QTest::addColumn<QString>("stem");
        QTest::addColumn<QString>("extension");

        const auto row = [](const char *name, const QString &path, const QString &component,
                             const QString &stem, const QString &extension) {
            QTest::newRow(name) << path << component << stem << extension;
        };
        row("plain", u"/x/Foo.app"_s, u"Foo.app"_s, u"Foo"_s, u"app"_s);
        row("relative", u"Foo.app"_s, u"Foo.app"_s, u"Foo"_s, u"app"_s);
        row("dot in front", u"/x/.app"_s, u".app"_s, u".app"_s, QString());
        row("dot at the end", u"/x/Foo."_s, u"Foo."_s, u"Foo."_s, QString());
        row("no dot", u"/x/Foo"_s, u"Foo"_s, u"Foo"_s, QString());
        row("dot in the folder", u"/x.app/Foo"_s, u"Foo"_s, u"Foo"_s, QString());
        row("blank in the stem", u"/x/My Tool.app"_s, u"My Tool.app"_s, u"My Tool"_s, u"app"_s);
        row("blank in the extension", u"/x/Foo.a pp"_s, u"Foo.a pp"_s, u"Foo.a pp"_s, QString());
        row("two dots", u"/x/Foo..app"_s, u"Foo..app"_s, u"Foo."_s, u"app"_s);
        row("hidden, with extension", u"/x/.name.app"_s, u".name.app"_s, u".name"_s, u"app"_s);
        row("stem is a dot", u"/x/..app"_s, u"..app"_s, u"..app"_s, QString());
        row("stem is two dots", u"/x/...app"_s, u"...app"_s, u"...app"_s, QString());
        row("left-to-right mark in the extension", u"/x/Foo.\u200Eapp"_s, u"Foo.\u200Eapp"_s,
            u"Foo.\u200Eapp"_s, QString());
        row("root", u"/"_s, u"/"_s, u"/"_s, QString());
        row("trailing slashes", u"/x/Foo.app//"_s, u"Foo.app"_s, u"Foo"_s, u"app"_s);
        row("two extensions", u"/x/Foo.tar.app"_s, u"Foo.tar.app"_s, u"Foo.tar"_s, u"app"_s);
        row("colon", u"/x/Foo:Bar.app"_s, u"Foo:Bar.app"_s, u"Foo:Bar"_s, u"app"_s);
        row("other letters", u"/x/Ünï.app"_s, u"Ünï.app"_s, u"Ünï"_s, u"app"_s);
        row("empty", QString(), QString(), QString(), QString());
    }

    void partsOfTheLastComponent()
    {
        QFETCH(QString, path);
        QTEST(lastPathComponent(path), "component");
        QTEST(lastPathComponentWithoutExtension(path), "stem");
        QTEST(pathExtension(path), "extension");
    }

    void aControlOfDirectionInTheExtensionMakesItNone_data()
    {
        QTest::addColumn<QChar>("character");
        QTest::addColumn<bool>("isControl");

        for (const QChar control : u"\u061C\u200E\u200F\u202A\u202E\u2066\u2069"_s)
            QTest::addRow("%04x", control.unicode()) << control << true;
        for (const QChar neighbour : u"\u061B\u200D\u2010\u2029\u202F\u2065\u206A"_s)
            QTest::addRow("%04x", neighbour.unicode()) << neighbour << false;
    }

    void aControlOfDirectionInTheExtensionMakesItNone()
    {
        QFETCH(QChar, character);
        const QString extension = u"a"_s + character;
        QTEST(pathExtension(u"/x/Foo."_s + extension) != extension, "isControl");
    }

    void liesBelowAFolderWhatIsInItOrItself()
    {
        QVERIFY(liesAtOrBelow(u"/a"_s, u"/a"_s));
        QVERIFY(liesAtOrBelow(u"/a/b/c"_s, u"/a"_s));
        QVERIFY(!liesAtOrBelow(u"/ab"_s, u"/a"_s));
        QVERIFY(!liesAtOrBelow(u"/b"_s, u"/a"_s));
    }
};

QTEST_APPLESS_MAIN(TestPaths)
#include "tst_paths.moc"
