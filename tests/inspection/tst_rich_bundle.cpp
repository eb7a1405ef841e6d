#include "inspection/application_inspector.h"
#include "platform/bundle_reading.h"
#include "tests/bundle_files/bundle_files.h"
#include "tests/signed_code/signed_code.h"

#include <QColor>
#include <QTest>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::inspection;
using namespace zorvane::tests;
using records::BlockedApplication;
using records::CodeIdentity;
namespace fs = std::filesystem;

namespace
{

const QByteArray team = "ABCDE12345";
constexpr std::uint32_t dynamicLibrary = 6;

QByteArray program(const QByteArray &identifier,
    const std::optional<QByteArray> &signingTeam = team, std::uint32_t fileType = 2)
{
    return machO({.signature = signature({.identifier = identifier, .team = signingTeam}),
        .fileType = fileType});
}

CodeIdentity identity(const QString &identifier)
{
    return {identifier, QString::fromLatin1(team)};
}

} // namespace

/** A bundle with everything that real ones hold, read through the ports of this system. */
class TestRichBundle : public QObject
{
    Q_OBJECT

private:
    fs::path in(const char *place) const { return m_app / "Contents" / place; }

    void addProgram(const char *place, const QByteArray &bytes) const
    {
        writeFile(in(place), bytes, Mode::Executable);
    }

    /** A bundle inside the bundle, with its information and its main executable. */
    void addNested(const char *place, const QByteArray &identifier) const
    {
        writeInformation(in(place), identifier, "run");
        writeFile(in(place) / "Contents" / "MacOS" / "run", program(identifier), Mode::Executable);
    }

    [[nodiscard]] InspectionResult inspect() const
    {
        return ApplicationInspector(
            {*m_reading.bundles, *m_reading.signatures, *m_reading.walk, *m_reading.icons})
            .inspectApplication(
                QUrl::fromLocalFile(QString::fromStdString(m_app.string())), QUuid::createUuid());
    }

    [[nodiscard]] QList<CodeIdentity> helpers() const
    {
        const InspectionResult result = inspect();
        const auto *record = std::get_if<BlockedApplication>(&result);
        return record != nullptr ? record->auxiliaryCodeIdentities.value()
                                 : QList{identity(u"refused"_s)};
    }

    platform::BundleReading m_reading;
    std::unique_ptr<ScratchFolder> m_scratch;
    fs::path m_app;

private Q_SLOTS:
    void initTestCase() { m_reading = platform::makeBundleReading(); }

    void init()
    {
        m_scratch = std::make_unique<ScratchFolder>();
        m_app = m_scratch->path() / "Rich.app";
        writeInformation(m_app, "com.example.Rich", "Rich");
        addProgram("MacOS/Rich", program("com.example.Rich"));
    }

    void theMainExecutableAloneLeavesNoHelpers() { QCOMPARE(helpers(), QList<CodeIdentity>()); }

    void nestedBundlesOfEveryKindAreFound()
    {
        addNested("Helpers/Updater.app", "com.example.Updater");
        addNested("Frameworks/F.framework/Versions/A/Helpers/Deep.app", "com.example.Deep");
        addNested("XPCServices/Service.xpc", "com.example.Service");
        addNested("Library/LoginItems/Login.app", "com.example.Login");
        addNested("PlugIns/Share.appex", "com.example.Share");
        addNested("Library/SystemExtensions/com.example.Net.systemextension", "com.example.Net");
        addNested("Helpers/Updater.app/Contents/XPCServices/Inner.xpc", "com.example.Inner");
        QCOMPARE(helpers(),
            (QList<CodeIdentity>{identity(u"com.example.Deep"_s), identity(u"com.example.Inner"_s),
                identity(u"com.example.Login"_s), identity(u"com.example.Net"_s),
                identity(u"com.example.Service"_s), identity(u"com.example.Share"_s),
                identity(u"com.example.Updater"_s)}));
    }

    void programsInEveryHelperFolderAreFoundAtAnyDepth()
    {
        const std::array places{"MacOS/a", "Helpers/b", "XPCServices/c", "Library/LoginItems/d",
            "Library/LaunchAgents/e", "Library/LaunchDaemons/f", "Library/LaunchServices/g",
            "MacOS/deep/er/h"};
        QList<CodeIdentity> expected;
        for (const char *place : places) {
            const QByteArray name = QByteArray(place).last(1);
            addProgram(place, program(name));
            expected.append(identity(QString::fromLatin1(name)));
        }
        QCOMPARE(helpers(), expected);
    }

    void programsElsewhereAreNoHelpers()
    {
        addProgram("Frameworks/tool", program("a"));
        addProgram("Resources/tool", program("b"));
        addProgram("Library/Other/tool", program("c"));
        addProgram("MacOSX/tool", program("d"));
        addProgram("Resources/Contents/MacOS/tool", program("e"));
        addProgram("../tool", program("f"));
        QCOMPARE(helpers(), QList<CodeIdentity>());
    }

    void whatIsNoProgramIsNoHelper()
    {
        addProgram("MacOS/script", "#!/bin/sh\nexit 0\n# longer than any header\n");
        // Only their kind keeps these two out: both are signed.
        if (!setSignatureAttribute(
                in("MacOS/script"), "CodeDirectory", codeDirectory({.identifier = "script"})))
            QSKIP("This file system keeps no extended attributes.");
        QVERIFY(m_reading.signatures->signingInformation(in("MacOS/script"))->identifier);
        addProgram("MacOS/library.dylib", program("library", team, dynamicLibrary));
        addProgram("MacOS/short", QByteArray(15, '\xCE'));
        addProgram("MacOS/empty", {});
        writeFile(in("MacOS/not-executable"), program("plain"));
        QCOMPARE(helpers(), QList<CodeIdentity>());
    }

    void theFirstSliceDecidesWhatAUniversalFileIs()
    {
        const QByteArray library = program("library", team, dynamicLibrary);
        const QByteArray executable = program("executable");
        addProgram("MacOS/library-first",
            universal({.slices = {{cpuX86_64, 3, library}, {cpuArm64, 0, program("second")}}}));
        addProgram("MacOS/executable-first",
            universal({.slices = {{cpuX86_64, 3, program("intel")}, {cpuArm64, 0, executable}}}));
        QCOMPARE(helpers(), QList<CodeIdentity>{identity(u"executable"_s)});
    }

    void hiddenItemsAreNeverVisited()
    {
        addProgram("MacOS/.hidden", program("a"));
        addProgram("Helpers/.folder/tool", program("b"));
        addNested("Helpers/.folder/Updater.app", "c");
        addNested("Helpers/.Updater.app", "d");
        QCOMPARE(helpers(), QList<CodeIdentity>());
    }

    void linksAreNotFollowed()
    {
        const fs::path outside = m_scratch->path() / "Outside.app";
        writeInformation(outside, "com.example.Outside", "run");
        writeFile(outside / "Contents" / "MacOS" / "run", program("com.example.Outside"),
            Mode::Executable);
        fs::create_directories(in("Helpers"));
        fs::create_directory_symlink(outside, in("Helpers/Link.app"));
        fs::create_directory_symlink(outside / "Contents", in("Helpers/inner"));
        fs::create_symlink(outside / "Contents" / "MacOS" / "run", in("MacOS/run"));
        fs::create_directory_symlink("..", in("Helpers/loop"));
        fs::create_directory_symlink(m_app, in("Helpers/Self.app"));
        fs::create_symlink("nowhere", in("MacOS/broken"));
        QCOMPARE(helpers(), QList<CodeIdentity>());
    }

    void unreadableFoldersAndFilesAreLeftOut()
    {
        addNested("Helpers/Open.app", "open");
        addNested("Helpers/closed/Inner.app", "inner");
        addNested("Helpers/Closed.app", "closed");
        addProgram("MacOS/closed", program("file"));
        fs::permissions(in("Helpers/closed"), fs::perms::none);
        fs::permissions(in("Helpers/Closed.app"), fs::perms::none);
        fs::permissions(in("MacOS/closed"), fs::perms::owner_exec);
        const OrdinaryUser user(m_scratch->path());
        QCOMPARE(helpers(), QList<CodeIdentity>{identity(u"open"_s)});
    }

    void pipesInHelperFoldersAreNotWaitedFor()
    {
        QCOMPARE(::mkfifo(in("MacOS/pipe").c_str(), 0700), 0);
        fs::create_directories(in("Helpers/Odd.app/Contents"));
        QCOMPARE(::mkfifo(in("Helpers/Odd.app/Contents/Info.plist").c_str(), 0700), 0);
        QCOMPARE(helpers(), QList<CodeIdentity>());
    }

    void aNestedBundleAndItsExecutableCountOnce()
    {
        addNested("Helpers/Updater.app", "com.example.Updater");
        addProgram("MacOS/copy", program("com.example.Updater"));
        QCOMPARE(helpers(), QList<CodeIdentity>{identity(u"com.example.Updater"_s)});
    }

    void helpersOfTheMainIdentityAddNothing()
    {
        addProgram("MacOS/second", program("com.example.Rich"));
        addNested("Helpers/Again.app", "com.example.Rich");
        QCOMPARE(helpers(), QList<CodeIdentity>());
    }

    void teamsTellIdentitiesApart()
    {
        addProgram("MacOS/a", program("helper", std::nullopt));
        addProgram("MacOS/b", program("helper", "ZZZZZ"));
        addProgram("MacOS/c", program("helper", "AAAAA"));
        addProgram("MacOS/d", program("com.example.Rich", std::nullopt));
        QCOMPARE(helpers(),
            (QList<CodeIdentity>{{u"com.example.Rich"_s, std::nullopt}, {u"helper"_s, std::nullopt},
                {u"helper"_s, u"AAAAA"_s}, {u"helper"_s, u"ZZZZZ"_s}}));
    }

    void unsignedHelpersAreLeftOut()
    {
        addProgram("MacOS/unsigned", machO());
        writeInformation(in("Helpers/Unsigned.app"), "com.example.Unsigned", "run");
        addProgram("Helpers/Unsigned.app/Contents/MacOS/run", machO());
        addProgram("Helpers/damaged", program("damaged").first(200));
        QCOMPARE(helpers(), QList<CodeIdentity>());
    }

    void namesThatAreNoTextsAreRead()
    {
        writeFile(in("MacOS") / "\xFF\xFE", program("odd"), Mode::Executable);
        writeInformation(in("Helpers") / "\xFF.app", "nested", "run");
        writeFile(in("Helpers") / "\xFF.app" / "Contents" / "MacOS" / "run", program("nested"),
            Mode::Executable);
        QCOMPARE(helpers(), (QList<CodeIdentity>{identity(u"nested"_s), identity(u"odd"_s)}));
    }

    void theUppercaseExtensionIsInspectedAlike()
    {
        const fs::path renamed = m_scratch->path() / "Rich.APP";
        fs::rename(m_app, renamed);
        m_app = renamed;
        QVERIFY(std::holds_alternative<BlockedApplication>(inspect()));
    }

    void theIconIsReadFromTheBundle()
    {
        writeFile(in("Info.plist"),
            textPropertyList({{"CFBundleIdentifier", "com.example.Rich"},
                {"CFBundleExecutable", "Rich"}, {"CFBundleIconFile", "Rich"}}));
        writeFile(in("Resources/Rich.icns"),
            iconFamily({{"ic12", squarePng(64, Qt::green)}, {"ic08", squarePng(256, Qt::blue)}}));
        const auto record = std::get<BlockedApplication>(inspect());
        QVERIFY(record.iconData);
        const QImage icon = QImage::fromData(*record.iconData);
        QCOMPARE(icon.size(), QSize(128, 128));
        QCOMPARE(icon.pixelColor(64, 64), QColor(Qt::blue));
    }

    void refusalsSayWhy()
    {
        writeFile(in("Info.plist"), textPropertyList({{"CFBundleExecutable", "Rich"}}));
        QVERIFY(inspect() == InspectionResult(ApplicationInspectionError::MissingIdentifier));
        writeInformation(m_app, "com.example.Rich", "Rich");
        addProgram("MacOS/Rich", machO());
        QVERIFY(inspect() == InspectionResult(ApplicationInspectionError::UnsignedApplication));
        fs::remove_all(m_app);
        QVERIFY(inspect() == InspectionResult(ApplicationInspectionError::NotAnApplication));
        writeFile(m_app, "a file");
        QVERIFY(inspect() == InspectionResult(ApplicationInspectionError::NotAnApplication));
    }
};

QTEST_GUILESS_MAIN(TestRichBundle)
#include "tst_rich_bundle.moc"
