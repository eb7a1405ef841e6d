#include "tests/contracts/code_reading.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

void writeDetached(const fs::path &folder, const DirectoryForm &form, bool withCms)
{
    writeFile(folder / "CodeDirectory", codeDirectory(form));
    if (withCms)
        writeFile(folder / "CodeSignature", {});
}

} // namespace

/** Signatures that stand beside their code. */
class TestDetachedSignaturesContract : public QObject
{
    Q_OBJECT

private:
    std::optional<ScratchFolder> m_folder;

    fs::path at(const char *path) const { return m_folder->path() / path; }

private Q_SLOTS:
    void init() { m_folder.emplace(); }

    void detachedSignatures()
    {
        const fs::path parts = at("Foo.app/Contents/_CodeSignature");
        writeFile(at("Foo.app/Contents/MacOS/Foo"), "#!/bin/sh\n");
        QCOMPARE(readingOf(at("Foo.app")), unsignedCode);
        writeDetached(parts, {.identifier = "script", .team = "TEAM"}, false);
        QCOMPARE(readingOf(at("Foo.app")), u"script"_s);
        writeDetached(parts, {.identifier = "script", .team = "TEAM", .hashType = hashSha1}, true);
        QCOMPARE(readingOf(at("Foo.app")), u"script of TEAM"_s);
        writeFile(parts / "CodeDirectory-2", codeDirectory({.identifier = "behind a gap"}));
        QCOMPARE(readingOf(at("Foo.app")), u"script of TEAM"_s);
        writeFile(parts / "CodeDirectory-1", codeDirectory({.identifier = "alternate"}));
        QCOMPARE(readingOf(at("Foo.app")), unsignedCode); // two of the same hash type now
        fs::remove(parts / "CodeDirectory-2");
        QCOMPARE(readingOf(at("Foo.app")), u"alternate"_s);
        writeFile(parts / "CodeDirectory", "nonsense");
        QCOMPARE(readingOf(at("Foo.app")), unsignedCode);
    }

    void signaturesAreNeverMixed()
    {
        const fs::path parts = at("Foo.app/Contents/_CodeSignature");
        writeDetached(parts, {.identifier = "detached", .team = "TEAM"}, true);
        const fs::path program = at("Foo.app/Contents/MacOS/Foo");
        writeFile(program, unsignedProgram());
        QCOMPARE(readingOf(at("Foo.app")), u"detached of TEAM"_s);
        writeFile(program, machO({.signature = signature({.team = "T"}, false)}));
        QCOMPARE(readingOf(at("Foo.app")), u"com.example.Tool"_s);
        writeFile(program, machO({.signature = signature({.team = "T"}, true)}));
        QCOMPARE(readingOf(at("Foo.app")), u"com.example.Tool of T"_s);
        writeFile(program, machO({.signature = signature({.version = 1}, true)}));
        QCOMPARE(readingOf(at("Foo.app")), unsignedCode);
    }

    void aMainExecutableStandsForItsBundle()
    {
        writeFile(
            at("Foo.app/Contents/Info.plist"), textPropertyList({{"CFBundleExecutable", "Main"}}));
        writeDetached(at("Foo.app/Contents/_CodeSignature"), {.identifier = "bundle"}, true);
        for (const char *name : {"MacOS/Main", "MacOS/helper", "Helpers/Main"})
            writeFile(at("Foo.app/Contents") / name, unsignedProgram());
        QCOMPARE(readingOf(at("Foo.app/Contents/MacOS/Main")), u"bundle"_s);
        QCOMPARE(readingOf(at("Foo.app/Contents/MacOS/helper")), unsignedCode);
        QCOMPARE(readingOf(at("Foo.app/Contents/Helpers/Main")), unsignedCode);

        writeFile(at("Old.app/Support Files/MacOS/Old"), unsignedProgram());
        writeDetached(at("Old.app/Support Files/_CodeSignature"), {.identifier = "old"}, true);
        QCOMPARE(readingOf(at("Old.app/Support Files/MacOS/Old")), u"old"_s);
    }

    void aFlatBundleHasToSaySomethingOfItself()
    {
        writeFile(at("flat/flat"), unsignedProgram());
        writeDetached(at("flat/_CodeSignature"), {.identifier = "bundle"}, true);
        QCOMPARE(readingOf(at("flat/flat")), unsignedCode);
        writeFile(at("flat/Info.plist"), textPropertyList({}));
        QCOMPARE(readingOf(at("flat/flat")), unsignedCode);
        writeFile(at("flat/Info.plist"), textPropertyList({{"CFBundleName", "Flat"}}));
        QCOMPARE(readingOf(at("flat/flat")), u"bundle"_s);
        writeFile(at("flat/Info.plist"), textPropertyList({{"CFBundleExecutable", "other"}}));
        writeFile(at("flat/other"), unsignedProgram());
        QCOMPARE(readingOf(at("flat/flat")), unsignedCode);
    }

    void signaturesInExtendedAttributes()
    {
        writeFile(at("script"), "#!/bin/sh\n");
        const QByteArray directory = codeDirectory({.identifier = "script", .team = "TEAM"});
        if (!setSignatureAttribute(at("script"), "CodeDirectory", directory))
            QSKIP("This file system keeps no extended attributes.");
        QCOMPARE(readingOf(at("script")), u"script"_s);
        QVERIFY(setSignatureAttribute(at("script"), "CodeSignature", {}));
        QCOMPARE(readingOf(at("script")), u"script of TEAM"_s);
        QVERIFY(setSignatureAttribute(at("script"), "CodeDirectory-1",
            codeDirectory({.identifier = "better", .hashType = hashSha384})));
        QCOMPARE(readingOf(at("script")), u"better"_s);
        QVERIFY(setSignatureAttribute(at("script"), "CodeDirectory-1", {}));
        QCOMPARE(readingOf(at("script")), unsignedCode);

        writeFile(at("program"), unsignedProgram());
        QVERIFY(setSignatureAttribute(at("program"), "CodeDirectory", directory));
        QCOMPARE(readingOf(at("program")), unsignedCode);

        writeFile(at("Plain.app/Contents/Info.plist"), textPropertyList({}));
        QVERIFY(
            setSignatureAttribute(at("Plain.app/Contents/Info.plist"), "CodeDirectory", directory));
        QCOMPARE(readingOf(at("Plain.app")), u"script"_s);
    }
};

QTEST_GUILESS_MAIN(TestDetachedSignaturesContract)
#include "tst_detached_signatures_contract.moc"
