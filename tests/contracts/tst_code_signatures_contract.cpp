#include "tests/contracts/code_reading.h"

#include <QTest>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

QByteArray text(const QByteArray &key, const QByteArray &value)
{
    return "<key>" + key + "</key><string>" + value + "</string>";
}

/** A property list of one dictionary; @p content is its XML. */
QByteArray information(const QByteArray &content)
{
    return "<plist version=\"1.0\"><dict>" + content + "</dict></plist>\n";
}

} // namespace

/** Which file's signature is read for a path. */
class TestCodeSignaturesContract : public QObject
{
    Q_OBJECT

private:
    std::optional<ScratchFolder> m_folder;

    fs::path at(const char *path) const { return m_folder->path() / path; }

private Q_SLOTS:
    void init() { m_folder.emplace(); }

    void nothingIsNoCode()
    {
        QCOMPARE(readingOf(at("missing")), noCode);
        QCOMPARE(readingOf(at("missing.app/Contents/MacOS/missing")), noCode);
        fs::create_directories(at("Empty.app"));
        QCOMPARE(readingOf(at("Empty.app")), noCode);
        QCOMPARE(::mkfifo(at("pipe").c_str(), 0700), 0);
        QCOMPARE(readingOf(at("pipe")), noCode);
    }

    void aFileThatCannotBeReadIsNoCode()
    {
        writeFile(at("program"), signedProgram("x"));
        fs::permissions(at("program"), fs::perms::none);
        const OrdinaryUser user(m_folder->path());
        QCOMPARE(readingOf(at("program")), noCode);
    }

    void singleFiles()
    {
        writeFile(at("program"), signedProgram("x"));
        writeFile(at("unsigned"), unsignedProgram());
        writeFile(at("script"), "#!/bin/sh\n");
        writeFile(at("empty"), {});
        writeFile(at("universal64"), universal({{{cpuArm64, 0, signedProgram("x")}}, 0xCAFEBABF}));
        writeFile(at("twice"),
            universal(
                {{{cpuX86_64, 3, unsignedProgram()}, {cpuArm64, 0, signedProgram("x"), 4096}}}));
        QCOMPARE(readingOf(at("program")), u"x"_s);
        QCOMPARE(readingOf(at("unsigned")), unsignedCode);
        QCOMPARE(readingOf(at("script")), unsignedCode);
        QCOMPARE(readingOf(at("empty")), unsignedCode);
        QCOMPARE(readingOf(at("universal64")), unsignedCode);
        QCOMPARE(readingOf(at("twice")), noCode);
        fs::create_symlink(at("program"), at("link"));
        QCOMPARE(readingOf(at("link")), u"x"_s);
    }

    void executableName_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected");
        const QByteArray old = text("NSExecutable", "Old");
        QTest::newRow("CFBundleExecutable") << text("CFBundleExecutable", "Main") << u"main"_s;
        QTest::newRow("both keys") << text("CFBundleExecutable", "Main") + old << u"main"_s;
        QTest::newRow("NSExecutable") << old << u"old"_s;
        QTest::newRow("neither") << QByteArray() << u"fallback"_s;
        QTest::newRow("empty") << text("CFBundleExecutable", "") + old << u"fallback"_s;
        QTest::newRow("number") << "<key>CFBundleExecutable</key><integer>1</integer>" + old
                                << u"fallback"_s;
        QTest::newRow("missing file") << text("CFBundleExecutable", "Gone") << unsignedCode;
        QTest::newRow("folder") << text("CFBundleExecutable", "Folder") << unsignedCode;
    }
    void executableName()
    {
        QFETCH(QByteArray, content);
        writeFile(at("My Tool.app/Contents/Info.plist"), information(content));
        writeFile(at("My Tool.app/Contents/MacOS/Main"), signedProgram("main"));
        writeFile(at("My Tool.app/Contents/MacOS/Old"), signedProgram("old"));
        writeFile(at("My Tool.app/Contents/MacOS/My Tool"), signedProgram("fallback"));
        fs::create_directories(at("My Tool.app/Contents/MacOS/Folder"));
        QTEST(readingOf(at("My Tool.app")), "expected");
        QTEST(readingOf(at("My Tool.app/")), "expected");
    }

    void anExecutableNameMayLeadElsewhereInTheBundle()
    {
        writeFile(at("Tool.app/Contents/Info.plist"),
            information(text("CFBundleExecutable", "../Helpers/run")));
        fs::create_directories(at("Tool.app/Contents/MacOS"));
        writeFile(at("Tool.app/Contents/Helpers/run"), signedProgram("run"));
        QCOMPARE(readingOf(at("Tool.app")), u"run"_s);
    }

    void anExecutableNameWithAZeroCharacterNamesNoFile()
    {
        writeFile(at("Tool.app/Contents/MacOS/run"), signedProgram("run"));
        writeFile(at("Tool.app/Contents/Info.plist"), "{ CFBundleExecutable = \"run\"; }");
        QCOMPARE(readingOf(at("Tool.app")), u"run"_s);
        writeFile(at("Tool.app/Contents/Info.plist"), "{ CFBundleExecutable = \"run\\000x\"; }");
        QCOMPARE(readingOf(at("Tool.app")), unsignedCode);
    }

    void foldersInAnotherLetterCaseMakeTheLayoutToo()
    {
        writeFile(at("case"), {});
        if (fs::exists(at("CASE")))
            QSKIP("The disk takes both letter cases for one name");
        const QByteArray named = information(text("CFBundleExecutable", "Tool"));
        writeFile(at("Low.app/contents/Info.plist"), named);
        writeFile(at("Low.app/contents/MacOS/Tool"), signedProgram("low"));
        QCOMPARE(readingOf(at("Low.app")), u"low"_s);
        writeFile(at("Low.app/Contents/Info.plist"), named);
        writeFile(at("Low.app/Contents/MacOS/Tool"), signedProgram("very case"));
        QCOMPARE(readingOf(at("Low.app")), u"very case"_s);

        writeFile(at("Kit.framework/versions/Current/Resources/Info.plist"), named);
        writeFile(at("Kit.framework/versions/Current/Tool"), signedProgram("version"));
        QCOMPARE(readingOf(at("Kit.framework")), u"version"_s);
    }

    void executableIsSearchedFromTheInsideOut()
    {
        writeFile(at("Foo.app/Contents/PkgInfo"), "APPL????");
        writeFile(at("Foo.app/Foo"), signedProgram("root"));
        QCOMPARE(readingOf(at("Foo.app")), u"root"_s);
        writeFile(at("Foo.app/Contents/Foo"), signedProgram("contents"));
        QCOMPARE(readingOf(at("Foo.app")), u"contents"_s);
        writeFile(at("Foo.app/Contents/MacOS/Foo"), signedProgram("macos"));
        QCOMPARE(readingOf(at("Foo.app")), u"macos"_s);
    }

    void layouts()
    {
        const QByteArray named = information(text("CFBundleExecutable", "Tool"));
        writeFile(at("Flat.app/Info.plist"), named);
        writeFile(at("Flat.app/Tool"), signedProgram("flat"));
        QCOMPARE(readingOf(at("Flat.app")), u"flat"_s);

        writeFile(at("Old.app/Support Files/Info.plist"), named);
        writeFile(at("Old.app/Support Files/Tool"), signedProgram("old"));
        writeFile(at("Old.app/Versions/Current/Tool"), signedProgram("wrong"));
        QCOMPARE(readingOf(at("Old.app")), u"old"_s);

        writeFile(at("Kit.framework/Versions/A/Resources/Info.plist"), named);
        writeFile(at("Kit.framework/Versions/A/Tool"), signedProgram("version"));
        fs::create_symlink("A", at("Kit.framework/Versions/Current"));
        QCOMPARE(readingOf(at("Kit.framework")), u"version"_s);
    }

    void aLinkedMainExecutableIsFollowed()
    {
        writeFile(at("elsewhere"), signedProgram("x"));
        fs::create_directories(at("Foo.app/Contents/MacOS"));
        fs::create_symlink(at("elsewhere"), at("Foo.app/Contents/MacOS/Foo"));
        QCOMPARE(readingOf(at("Foo.app")), u"x"_s);
    }

    void bundlesWithoutExecutable()
    {
        writeFile(
            at("Plain.app/Contents/Info.plist"), information(text("CFBundleIdentifier", "plain")));
        QCOMPARE(readingOf(at("Plain.app")), unsignedCode);

        writeFile(at("Page.app/Contents/Info.plist"), information(text("MainHTML", "page.html")));
        QCOMPARE(readingOf(at("Page.app")), noCode);
        writeFile(at("Page.app/Contents/page.html"), "<html/>");
        QCOMPARE(readingOf(at("Page.app")), unsignedCode);
        writeFile(at("NoPage.app/Contents/Info.plist"),
            information("<key>MainHTML</key><integer>1</integer>"));
        QCOMPARE(readingOf(at("NoPage.app")), noCode);

        writeFile(at("Package.app/Contents/one.dist"), "script");
        QCOMPARE(readingOf(at("Package.app")), unsignedCode);
        writeFile(at("Package.app/Contents/two.dist"), "script");
        QCOMPARE(readingOf(at("Package.app")), noCode);
    }
};

QTEST_GUILESS_MAIN(TestCodeSignaturesContract)
#include "tst_code_signatures_contract.moc"
