#include "fakes/fake_services.h"
#include "inspection/application_icon.h"
#include "inspection/application_inspector.h"
#include "inspection/helper_candidates.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::inspection;
using namespace zorvane::tests;
using platform::ItemKind;
using records::BlockedApplication;
using records::CodeIdentity;

namespace
{

const QString team = u"ABCDE12345"_s;
const QUuid someId(u"{11111111-2222-3333-4444-555555555555}"_s);

/** What a test compares of an inspection: the record, or the error's text. */
std::optional<BlockedApplication> recordOf(const InspectionResult &result)
{
    const auto *record = std::get_if<BlockedApplication>(&result);
    return record ? std::optional(*record) : std::nullopt;
}

std::optional<ApplicationInspectionError> errorOf(const InspectionResult &result)
{
    const auto *error = std::get_if<ApplicationInspectionError>(&result);
    return error ? std::optional(*error) : std::nullopt;
}

} // namespace

class TestApplicationInspector : public QObject
{
    Q_OBJECT

private:
    struct System {
        FakeBundles bundles;
        FakeSignatures signatures;
        FakeWalk walk;
        FakeIcons icons;
    };

    void addBundle(const QString &path, const QVariantMap &information)
    {
        m_system->bundles.information.insert(path, information);
    }

    void sign(const QString &path, const QString &identifier,
        const std::optional<QString> &signingTeam = std::nullopt)
    {
        m_system->signatures.signatures.insert(path, {identifier, signingTeam});
    }

    /** A bundle with an identifier and a signature at @p path. */
    void addApplication(const QString &path, const QVariantMap &more = {})
    {
        QVariantMap information{{u"CFBundleIdentifier"_s, u"com.example.Tool"_s}};
        information.insert(more);
        addBundle(path, information);
        sign(path, u"com.example.Tool"_s, team);
    }

    void addNested(const std::string &path, const QString &identifier,
        const std::optional<QString> &signingTeam = std::nullopt)
    {
        m_system->walk.items.emplace_back(path, ItemKind::Directory);
        sign(QString::fromStdString(path), identifier, signingTeam);
    }

    ApplicationInspector inspector() const
    {
        return ApplicationInspector(
            {m_system->bundles, m_system->signatures, m_system->walk, m_system->icons});
    }

    InspectionResult inspect(const QString &path) const
    {
        return inspector().inspectApplication(QUrl::fromLocalFile(path), someId);
    }

    std::unique_ptr<System> m_system;

private Q_SLOTS:
    void init() { m_system = std::make_unique<System>(); }

    void errorsHaveTheirTexts()
    {
        QCOMPARE(describe(ApplicationInspectionError::NotAnApplication),
            u"Drop an application with the .app extension."_s);
        QCOMPARE(describe(ApplicationInspectionError::MissingIdentifier),
            u"This application's identifier could not be read."_s);
        QCOMPARE(describe(ApplicationInspectionError::UnsignedApplication),
            u"This application does not have an identifiable code signature."_s);
    }

    void theExtensionDecidesWhatIsAnApplication_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("lower case") << u"/x/Tool.app"_s << true;
        QTest::newRow("upper case") << u"/x/Tool.APP"_s << true;
        QTest::newRow("blank in the name") << u"/x/My Tool.app"_s << true;
        QTest::newRow("percent sign") << u"/x/100%25 Tool.app"_s << true;
        QTest::newRow("hash and question mark") << u"/x/a#b?c.app"_s << true;
        QTest::newRow("app extension") << u"/x/Tool.appex"_s << false;
        QTest::newRow("none") << u"/x/Tool"_s << false;
        QTest::newRow("nothing but the extension") << u"/x/.app"_s << false;
        QTest::newRow("extension of the folder above") << u"/x.app/Tool"_s << false;
        QTest::newRow("root") << u"/"_s << false;
    }

    void theExtensionDecidesWhatIsAnApplication()
    {
        QFETCH(QString, path);
        QFETCH(bool, accepted);
        addApplication(path);
        const InspectionResult result = inspect(path);
        if (accepted)
            QCOMPARE(recordOf(result)->path, path);
        else
            QCOMPARE(errorOf(result), ApplicationInspectionError::NotAnApplication);
    }

    void aTrailingSlashIsAcceptedAndDropped()
    {
        addApplication(u"/x/Foo.app"_s);
        for (const char *url : {"file:///x/Foo.app/", "file:///x/Foo.app//"}) {
            const auto record
                = recordOf(inspector().inspectApplication(QUrl(QString::fromLatin1(url)), someId));
            QVERIFY(record);
            QCOMPARE(record->path, u"/x/Foo.app"_s);
            QCOMPARE(record->name, u"Foo"_s);
        }
    }

    void aUrlOfAnotherKindIsNoApplication()
    {
        addApplication(u"/Foo.app"_s);
        const auto result
            = inspector().inspectApplication(QUrl(u"https://example.com/Foo.app"_s), someId);
        QCOMPARE(errorOf(result), ApplicationInspectionError::NotAnApplication);
        QCOMPARE(errorOf(inspector().inspectApplication(QUrl(), someId)),
            ApplicationInspectionError::NotAnApplication);
    }

    void aFolderThatIsNoReadableBundleIsNoApplication()
    {
        sign(u"/x/Tool.app"_s, u"com.example.Tool"_s);
        QCOMPARE(errorOf(inspect(u"/x/Tool.app"_s)), ApplicationInspectionError::NotAnApplication);
    }

    void aBundleWithoutIdentifierIsRefusedEvenIfSigned()
    {
        addBundle(u"/x/Tool.app"_s, {});
        sign(u"/x/Tool.app"_s, u"com.example.Tool"_s);
        QCOMPARE(errorOf(inspect(u"/x/Tool.app"_s)), ApplicationInspectionError::MissingIdentifier);
    }

    void aBundleWithoutSignatureIsRefused()
    {
        addBundle(u"/x/Tool.app"_s, {{u"CFBundleIdentifier"_s, u"com.example.Tool"_s}});
        QCOMPARE(
            errorOf(inspect(u"/x/Tool.app"_s)), ApplicationInspectionError::UnsignedApplication);
    }

    void aSignatureWithoutIdentifierIsNone()
    {
        addBundle(u"/x/Tool.app"_s, {{u"CFBundleIdentifier"_s, u"com.example.Tool"_s}});
        m_system->signatures.signatures.insert(u"/x/Tool.app"_s, {std::nullopt, team});
        QCOMPARE(
            errorOf(inspect(u"/x/Tool.app"_s)), ApplicationInspectionError::UnsignedApplication);
    }

    void aRecordIsComplete()
    {
        addApplication(u"/x/Tool.app"_s, {{u"CFBundleDisplayName"_s, u"The Tool"_s}});
        const auto record = recordOf(inspect(u"/x/Tool.app"_s));
        QVERIFY(record);
        BlockedApplication expected;
        expected.id = someId;
        expected.name = u"The Tool"_s;
        expected.bundleIdentifier = u"com.example.Tool"_s;
        expected.signingIdentifier = u"com.example.Tool"_s;
        expected.teamIdentifier = team;
        expected.auxiliaryCodeIdentities = QList<CodeIdentity>();
        expected.inspectionVersion = 5;
        expected.path = u"/x/Tool.app"_s;
        QCOMPARE(*record, expected);
    }

    void everyNewRecordIsOfTheCurrentVersionWithoutTheOlderList()
    {
        addApplication(u"/x/Tool.app"_s);
        const auto record = recordOf(inspect(u"/x/Tool.app"_s));
        QCOMPARE(record->inspectionVersion, qint64(5));
        QVERIFY(!record->auxiliarySigningIdentifiers);
    }

    void theDisplayNameIsTheFirstThatIsAText_data()
    {
        QTest::addColumn<QVariantMap>("information");
        QTest::addColumn<QString>("name");
        const QString display = u"CFBundleDisplayName"_s;
        const QString bundle = u"CFBundleName"_s;
        QTest::newRow("display name")
            << QVariantMap{{display, u"Display"_s}, {bundle, u"Bundle"_s}} << u"Display"_s;
        QTest::newRow("bundle name") << QVariantMap{{bundle, u"Bundle"_s}} << u"Bundle"_s;
        QTest::newRow("display name of another type")
            << QVariantMap{{display, 5}, {bundle, u"Bundle"_s}} << u"Bundle"_s;
        QTest::newRow("display name as bytes")
            << QVariantMap{{display, QByteArray("b")}, {bundle, u"Bundle"_s}} << u"Bundle"_s;
        QTest::newRow("both of another type")
            << QVariantMap{{display, true}, {bundle, QVariantList()}} << u"My Tool"_s;
        QTest::newRow("neither") << QVariantMap() << u"My Tool"_s;
        QTest::newRow("empty") << QVariantMap{{display, u""_s}} << u""_s;
        QTest::newRow("blanks") << QVariantMap{{display, u" a "_s}} << u" a "_s;
    }

    void theDisplayNameIsTheFirstThatIsAText()
    {
        QFETCH(QVariantMap, information);
        QFETCH(QString, name);
        addApplication(u"/x/My Tool.app"_s, information);
        QCOMPARE(recordOf(inspect(u"/x/My Tool.app"_s))->name, name);
    }

    void theTeamIsTrimmedAndTheIdentifierIsNot()
    {
        sign(u"/x"_s, u" id "_s, u" \u200B\nTEAM\t"_s);
        const CodeIdentity expected{u" id "_s, u"TEAM"_s};
        QCOMPARE(inspector().readCodeIdentity("/x"), expected);
    }

    void aTeamOfBlanksIsAbsent()
    {
        sign(u"/x"_s, u"id"_s, u" \u200B\n"_s);
        QCOMPARE(inspector().readCodeIdentity("/x"), (CodeIdentity{u"id"_s, std::nullopt}));
    }

    void anEmptyIdentifierIsPresent()
    {
        sign(u"/x"_s, u""_s);
        QCOMPARE(inspector().readCodeIdentity("/x"), (CodeIdentity{u""_s, std::nullopt}));
    }

    void nestedBundlesAreFoundByTheirExtension_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<bool>("isFolder");
        QTest::addColumn<bool>("counts");
        const auto row = [](const char *item, bool isFolder, bool counts) {
            QTest::newRow(item) << QString::fromUtf8(item) << isFolder << counts;
        };
        row("Contents/Frameworks/Helper.app", true, true);
        row("Contents/Frameworks/F.framework/Versions/A/Helper.APP", true, true);
        row("Contents/XPCServices/S.xpc", true, true);
        row("Contents/PlugIns/E.appex", true, true);
        row("Contents/Library/SystemExtensions/x.y.systemextension", true, true);
        row("Contents/Resources/S.XPC", true, true);
        row("Contents/Frameworks/F.framework", true, false);
        row("Contents/PlugIns/P.bundle", true, false);
        row("Contents/Helpers/app", true, false);
        row("Contents/Helpers/.app", true, false);
        row("Contents/Helpers/Tool.app", false, false);
        row("Contents/Helpers/Tool", true, false);
    }

    void nestedBundlesAreFoundByTheirExtension()
    {
        QFETCH(QString, item);
        QFETCH(bool, isFolder);
        QFETCH(bool, counts);
        const std::string path = "/x/Tool.app/" + item.toStdString();
        m_system->walk.items.emplace_back(
            path, isFolder ? ItemKind::Directory : ItemKind::RegularFile);
        sign(QString::fromStdString(path), u"inner"_s);
        const auto found
            = inspector().discoverAuxiliaryIdentities("/x/Tool.app", {u"main"_s, team});
        QCOMPARE(found.size(), counts ? 1 : 0);
    }

    void aLinkNamedLikeABundleIsNone()
    {
        m_system->walk.items.emplace_back("/x/Tool.app/Y.app", ItemKind::Other);
        sign(u"/x/Tool.app/Y.app"_s, u"inner"_s);
        QVERIFY(inspector()
                    .discoverAuxiliaryIdentities("/x/Tool.app", {u"main"_s, std::nullopt})
                    .isEmpty());
    }

    void helpersOfTheMainIdentityLeaveAnEmptyListPresent()
    {
        addApplication(u"/x/Tool.app"_s);
        addNested("/x/Tool.app/Contents/Helpers/H.app", u"com.example.Tool"_s, team);
        const auto record = recordOf(inspect(u"/x/Tool.app"_s));
        QVERIFY(record->auxiliaryCodeIdentities);
        QVERIFY(record->auxiliaryCodeIdentities->isEmpty());
    }

    void theMainIdentifierWithoutItsTeamIsAnotherIdentity()
    {
        addApplication(u"/x/Tool.app"_s);
        addNested("/x/Tool.app/Contents/Helpers/H.app", u"com.example.Tool"_s);
        const QList<CodeIdentity> expected{{u"com.example.Tool"_s, std::nullopt}};
        QCOMPARE(recordOf(inspect(u"/x/Tool.app"_s))->auxiliaryCodeIdentities, expected);
    }

    void sameIdentifiersOfDifferentTeamsAreBothKeptOrderedByTeam()
    {
        addApplication(u"/x/Tool.app"_s);
        addNested("/x/Tool.app/a.xpc", u"helper"_s, u"ZZZ"_s);
        addNested("/x/Tool.app/b.xpc", u"helper"_s, u"AAA"_s);
        addNested("/x/Tool.app/c.xpc", u"helper"_s);
        addNested("/x/Tool.app/d.xpc", u"Helper"_s, u"ZZZ"_s);
        addNested("/x/Tool.app/e.xpc", u"helper"_s, u"AAA"_s);
        const QList<CodeIdentity> expected{{u"Helper"_s, u"ZZZ"_s}, {u"helper"_s, std::nullopt},
            {u"helper"_s, u"AAA"_s}, {u"helper"_s, u"ZZZ"_s}};
        QCOMPARE(recordOf(inspect(u"/x/Tool.app"_s))->auxiliaryCodeIdentities, expected);
    }

    void helpersAreOrderedByCodePoint()
    {
        addApplication(u"/x/Tool.app"_s);
        addNested("/x/Tool.app/a.xpc", u"\uFFFD"_s);
        addNested("/x/Tool.app/b.xpc", u"\U0001F600"_s);
        const QList<CodeIdentity> expected{
            {u"\uFFFD"_s, std::nullopt}, {u"\U0001F600"_s, std::nullopt}};
        QCOMPARE(recordOf(inspect(u"/x/Tool.app"_s))->auxiliaryCodeIdentities, expected);
    }

    void unsignedNestedBundlesAreLeftOut()
    {
        addApplication(u"/x/Tool.app"_s);
        m_system->walk.items.emplace_back("/x/Tool.app/a.xpc", ItemKind::Directory);
        QVERIFY(recordOf(inspect(u"/x/Tool.app"_s))->auxiliaryCodeIdentities->isEmpty());
    }

    void helperDirectoriesAreTheSevenInOrder()
    {
        const std::vector<std::string_view> expected{"/Contents/MacOS/", "/Contents/Helpers/",
            "/Contents/XPCServices/", "/Contents/Library/LoginItems/",
            "/Contents/Library/LaunchAgents/", "/Contents/Library/LaunchDaemons/",
            "/Contents/Library/LaunchServices/"};
        QVERIFY(std::ranges::equal(embeddedHelperDirectories, expected));
    }

    void theIconIsAPngOf128By128_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("the very size") << QSize(128, 128);
        QTest::newRow("larger") << QSize(1024, 1024);
        QTest::newRow("smaller") << QSize(16, 16);
        QTest::newRow("not square") << QSize(300, 20);
    }

    void theIconIsAPngOf128By128()
    {
        QFETCH(QSize, size);
        addApplication(u"/x/Tool.app"_s);
        m_system->icons.image = QImage(size, QImage::Format_RGB32);
        m_system->icons.image.fill(Qt::red);
        m_system->icons.image.setText(u"Author"_s, u"someone"_s);
        const auto data = recordOf(inspect(u"/x/Tool.app"_s))->iconData;
        QVERIFY(data);
        QVERIFY(data->startsWith("\x89PNG"));
        const QImage image = QImage::fromData(*data);
        QCOMPARE(image.size(), QSize(128, 128));
        QVERIFY(image.hasAlphaChannel());
        QVERIFY(image.textKeys().isEmpty());
        for (const QPoint corner : {QPoint(0, 0), QPoint(127, 127), QPoint(64, 64)})
            QCOMPARE(image.pixelColor(corner), QColor(Qt::red));
    }

    void clearPixelsDoNotColourTheEdges()
    {
        QImage image(256, 256, QImage::Format_ARGB32);
        image.fill(qRgba(0, 255, 0, 0));
        for (int y = 0; y < 256; ++y) {
            for (int x = 0; x < 127; ++x)
                image.setPixel(x, y, qRgba(255, 0, 0, 255));
        }
        const QImage icon = QImage::fromData(*encodedIcon(image));
        const QColor edge = icon.pixelColor(63, 64);
        QVERIFY(edge.alpha() > 100 && edge.alpha() < 155);
        QCOMPARE(edge.green(), 0);
        QVERIFY(edge.red() > 250);
    }

    void aMissingIconFailsNothing()
    {
        addApplication(u"/x/Tool.app"_s);
        QVERIFY(!recordOf(inspect(u"/x/Tool.app"_s))->iconData);
    }
};

QTEST_GUILESS_MAIN(TestApplicationInspector)
#include "tst_application_inspector.moc"
