#include "tests/inspection/made_up_system.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::inspection;
using namespace zorvane::tests;
using records::BlockedApplication;
using records::CodeIdentity;

class TestApplicationInspector : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MadeUpSystem> m_system;

private Q_SLOTS:
    void init() { m_system = std::make_unique<MadeUpSystem>(); }

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
        m_system->addApplication(path);
        const InspectionResult result = m_system->inspect(path);
        if (accepted)
            QCOMPARE(recordOf(result)->path, path);
        else
            QCOMPARE(errorOf(result), ApplicationInspectionError::NotAnApplication);
    }

    void aTrailingSlashIsAcceptedAndDropped()
    {
        m_system->addApplication(u"/x/Foo.app"_s);
        for (const char *url : {"file:///x/Foo.app/", "file:///x/Foo.app//"}) {
            const auto record = recordOf(
                m_system->inspector().inspectApplication(QUrl(QString::fromLatin1(url)), someId));
            QVERIFY(record);
            QCOMPARE(record->path, u"/x/Foo.app"_s);
            QCOMPARE(record->name, u"Foo"_s);
        }
    }

    void aUrlOfAnotherKindIsNoApplication()
    {
        m_system->addApplication(u"/Foo.app"_s);
        const auto result = m_system->inspector().inspectApplication(
            QUrl(u"https://example.com/Foo.app"_s), someId);
        QCOMPARE(errorOf(result), ApplicationInspectionError::NotAnApplication);
        QCOMPARE(errorOf(m_system->inspector().inspectApplication(QUrl(), someId)),
            ApplicationInspectionError::NotAnApplication);
    }

    void aFolderThatIsNoReadableBundleIsNoApplication()
    {
        m_system->sign(u"/x/Tool.app"_s, u"com.example.Tool"_s);
        QCOMPARE(errorOf(m_system->inspect(u"/x/Tool.app"_s)),
            ApplicationInspectionError::NotAnApplication);
    }

    void aBundleWithoutIdentifierIsRefusedEvenIfSigned()
    {
        m_system->addBundle(u"/x/Tool.app"_s, {});
        m_system->sign(u"/x/Tool.app"_s, u"com.example.Tool"_s);
        QCOMPARE(errorOf(m_system->inspect(u"/x/Tool.app"_s)),
            ApplicationInspectionError::MissingIdentifier);
    }

    void aBundleWithoutSignatureIsRefused()
    {
        m_system->addBundle(u"/x/Tool.app"_s, {{u"CFBundleIdentifier"_s, u"com.example.Tool"_s}});
        QCOMPARE(errorOf(m_system->inspect(u"/x/Tool.app"_s)),
            ApplicationInspectionError::UnsignedApplication);
    }

    void aSignatureWithoutIdentifierIsNone()
    {
        m_system->addBundle(u"/x/Tool.app"_s, {{u"CFBundleIdentifier"_s, u"com.example.Tool"_s}});
        m_system->signatures.signatures.insert(u"/x/Tool.app"_s, {std::nullopt, team});
        QCOMPARE(errorOf(m_system->inspect(u"/x/Tool.app"_s)),
            ApplicationInspectionError::UnsignedApplication);
    }

    void aRecordIsComplete()
    {
        m_system->addApplication(u"/x/Tool.app"_s, {{u"CFBundleDisplayName"_s, u"The Tool"_s}});
        const auto record = recordOf(m_system->inspect(u"/x/Tool.app"_s));
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
        m_system->addApplication(u"/x/Tool.app"_s);
        const auto record = recordOf(m_system->inspect(u"/x/Tool.app"_s));
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
        m_system->addApplication(u"/x/My Tool.app"_s, information);
        QCOMPARE(recordOf(m_system->inspect(u"/x/My Tool.app"_s))->name, name);
    }

    void theTeamIsTrimmedAndTheIdentifierIsNot()
    {
        m_system->sign(u"/x"_s, u" id "_s, u" \u200B\nTEAM\t"_s);
        const CodeIdentity expected{u" id "_s, u"TEAM"_s};
        QCOMPARE(m_system->inspector().readCodeIdentity("/x"), expected);
    }

    void aTeamOfBlanksIsAbsent()
    {
        m_system->sign(u"/x"_s, u"id"_s, u" \u200B\n"_s);
        QCOMPARE(
            m_system->inspector().readCodeIdentity("/x"), (CodeIdentity{u"id"_s, std::nullopt}));
    }

    void anEmptyIdentifierIsPresent()
    {
        m_system->sign(u"/x"_s, u""_s);
        QCOMPARE(m_system->inspector().readCodeIdentity("/x"), (CodeIdentity{u""_s, std::nullopt}));
    }

    void aMissingIconFailsNothing()
    {
        m_system->addApplication(u"/x/Tool.app"_s);
        QVERIFY(!recordOf(m_system->inspect(u"/x/Tool.app"_s))->iconData);
    }
};

QTEST_GUILESS_MAIN(TestApplicationInspector)
#include "tst_application_inspector.moc"
