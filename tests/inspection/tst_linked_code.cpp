#include "inspection/executable_image.h"
#include "platform/simulated/simulated_code_signatures.h"

#include <filesystem>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::inspection;
using namespace zorvane::platform;

/** Programs as a real linker makes and signs them. */
class TestLinkedCode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!std::filesystem::exists(ZORVANE_LINKED_CODE "/universal"))
            QSKIP("No linked programs: clang, ld64.lld or llvm-lipo is missing.");
    }

    void reads_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<bool>("isExecutable");
        QTest::newRow("tool") << u"tool"_s << true;
        QTest::newRow("library.dylib") << u"library.dylib"_s << false;
        QTest::newRow("plugin.bundle") << u"plugin.bundle"_s << false;
        QTest::newRow("object.o") << QString() << false;
        QTest::newRow("intel") << QString() << true;
        QTest::newRow("universal") << u"tool"_s << true;
    }
    void reads()
    {
        QFETCH(QString, identifier);
        QFETCH(bool, isExecutable);
        const auto path = std::filesystem::path(ZORVANE_LINKED_CODE) / QTest::currentDataTag();
        const auto information = simulated::SimulatedCodeSignatures().signingInformation(path);
        QVERIFY(information);
        QCOMPARE(information->identifier.value_or(QString()), identifier);
        QCOMPARE(information->identifier.has_value(), !identifier.isEmpty());
        QVERIFY(!information->teamIdentifier);
        QCOMPARE(isMainExecutableImage(path), isExecutable);
    }
};

QTEST_APPLESS_MAIN(TestLinkedCode)
#include "tst_linked_code.moc"
