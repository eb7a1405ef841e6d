#include "inspection/executable_image.h"
#include "platform/simulated/simulated_code_signatures.h"

#include <filesystem>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::inspection;
using namespace zorvane::platform;

namespace
{

const std::filesystem::path packages = ZORVANE_REAL_PACKAGES;

} // namespace

/** Programs as people publish them. */
class TestRealSignatures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<bool>("isExecutable");
        const QString unsignedCode;
        const QString browserTools = u"com.devexpress.testcafe-browser-tools"_s;

        // An application that nobody signed.
        QTest::newRow("node-notifier-10.0.1/vendor/mac.noindex/terminal-notifier.app")
            << unsignedCode << false;
        QTest::newRow("node-notifier-10.0.1/vendor/mac.noindex/terminal-notifier.app/Contents/MacOS"
                      "/terminal-notifier")
            << unsignedCode << true;
        // One slice carries one code directory, the other two.
        QTest::newRow("testcafe-browser-tools-2.0.26/bin/mac/TestCafe Browser Tools.app")
            << browserTools << false;
        QTest::newRow("testcafe-browser-tools-2.0.26/bin/mac/TestCafe Browser Tools.app/Contents"
                      "/MacOS/testcafe-browser-tools")
            << browserTools << true;
        QTest::newRow("testcafe-browser-tools-2.0.26/bin/mac/main") << browserTools << true;
        // The first slice is unsigned, the one for arm64 is signed.
        QTest::newRow("get-windows-9.3.0/main") << u"get-windows"_s << true;
        QTest::newRow("get-windows-9.3.0/lib/binding/napi-9-darwin-unknown-arm64"
                      "/node-get-windows.node")
            << u"node-get-windows.node"_s << false;
        QTest::newRow(
            "get-windows-9.3.0/lib/binding/napi-6-darwin-unknown-x64/node-active-win.node")
            << unsignedCode << false;
        // Signed by its linker.
        QTest::newRow("esbuild-darwin-arm64-0.28.2/bin/esbuild") << u"a.out"_s << true;
    }
    void reads()
    {
        QFETCH(QString, identifier);
        QFETCH(bool, isExecutable);
        const std::filesystem::path item = QTest::currentDataTag();
        if (!std::filesystem::exists(packages / *item.begin()))
            QSKIP("The package is not there: npm is missing, or could not fetch it.");
        const auto information
            = simulated::SimulatedCodeSignatures().signingInformation(packages / item);
        QVERIFY(information);
        QCOMPARE(information->identifier.value_or(QString()), identifier);
        QCOMPARE(information->identifier.has_value(), !identifier.isEmpty());
        QVERIFY(!information->teamIdentifier);
        QCOMPARE(isMainExecutableImage(packages / item), isExecutable);
    }
};

QTEST_APPLESS_MAIN(TestRealSignatures)
#include "tst_real_signatures.moc"
