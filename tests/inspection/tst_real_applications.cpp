#include "inspection/application_inspector.h"
#include "platform/bundle_reading.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::inspection;
using records::BlockedApplication;
using records::CodeIdentity;
namespace fs = std::filesystem;

namespace
{

const fs::path packages = ZORVANE_REAL_PACKAGES;

} // namespace

/** Applications and programs as people publish them. */
class TestRealApplications : public QObject
{
    Q_OBJECT

private:
    [[nodiscard]] ApplicationInspector inspector() const
    {
        return ApplicationInspector(
            {*m_reading.bundles, *m_reading.signatures, *m_reading.walk, *m_reading.icons});
    }

    [[nodiscard]] InspectionResult inspect(const fs::path &bundle) const
    {
        return inspector().inspectApplication(
            QUrl::fromLocalFile(QString::fromStdString(bundle.string())), QUuid::createUuid());
    }

    platform::BundleReading m_reading;

private Q_SLOTS:
    void initTestCase() { m_reading = platform::makeBundleReading(); }

    void anUnsignedApplicationIsRefused()
    {
        const fs::path app = packages / "node-notifier-10.0.1" / "vendor" / "mac.noindex"
            / "terminal-notifier.app";
        if (!fs::exists(app))
            QSKIP("The package is not there: npm is missing, or could not fetch it.");
        const InspectionResult result = inspect(app);
        QVERIFY(std::holds_alternative<ApplicationInspectionError>(result));
        QCOMPARE(describe(std::get<ApplicationInspectionError>(result)),
            u"This application does not have an identifiable code signature."_s);
    }

    void aSignedApplicationIsAccepted()
    {
        const fs::path app = packages / "testcafe-browser-tools-2.0.26" / "bin" / "mac"
            / "TestCafe Browser Tools.app";
        if (!fs::exists(app))
            QSKIP("The package is not there: npm is missing, or could not fetch it.");
        const InspectionResult result = inspect(app);
        QVERIFY(std::holds_alternative<BlockedApplication>(result));
        const auto &record = std::get<BlockedApplication>(result);
        QCOMPARE(record.name, u"TestCafe Browser Tools"_s);
        QCOMPARE(record.bundleIdentifier, u"com.devexpress.testcafe-browser-tools"_s);
        QCOMPARE(record.signingIdentifier, u"com.devexpress.testcafe-browser-tools"_s);
        QCOMPARE(record.teamIdentifier, std::nullopt);
        QCOMPARE(record.auxiliaryCodeIdentities, QList<CodeIdentity>());
        QCOMPARE(record.path, QString::fromStdString(app.string()));
    }

    void programsOutsideBundlesHaveTheirIdentities_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::newRow("get-windows-9.3.0/main") << u"get-windows"_s;
        QTest::newRow("esbuild-darwin-arm64-0.28.2/bin/esbuild") << u"a.out"_s;
    }

    void programsOutsideBundlesHaveTheirIdentities()
    {
        QFETCH(QString, identifier);
        const fs::path program = packages / QTest::currentDataTag();
        if (!fs::exists(program))
            QSKIP("The package is not there: npm is missing, or could not fetch it.");
        QCOMPARE(inspector().readCodeIdentity(program), (CodeIdentity{identifier, std::nullopt}));
    }

    void programsAreHelpersWhereHelpersStand_data()
    {
        programsOutsideBundlesHaveTheirIdentities_data();
    }

    void programsAreHelpersWhereHelpersStand()
    {
        QFETCH(QString, identifier);
        const fs::path program = packages / QTest::currentDataTag();
        if (!fs::exists(program))
            QSKIP("The package is not there: npm is missing, or could not fetch it.");
        const QTemporaryDir folder;
        const fs::path bundle = fs::path(folder.path().toStdString()) / "Host.app";
        for (const char *place : {"Contents/Helpers/tool", "Contents/Frameworks/tool"}) {
            fs::create_directories((bundle / place).parent_path());
            fs::copy_file(program, bundle / place);
            fs::permissions(bundle / place, fs::perms::owner_all);
        }
        QCOMPARE(inspector().discoverAuxiliaryIdentities(bundle, {u"host"_s, std::nullopt}),
            (QList<CodeIdentity>{{identifier, std::nullopt}}));
    }
};

QTEST_GUILESS_MAIN(TestRealApplications)
#include "tst_real_applications.moc"
