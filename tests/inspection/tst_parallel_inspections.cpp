#include "inspection/application_inspector.h"
#include "platform/bundle_reading.h"
#include "tests/bundle_files/bundle_files.h"
#include "tests/signed_code/signed_code.h"

#include <array>
#include <QColor>
#include <QTest>
#include <thread>
#include <vector>

using namespace zorvane;
using namespace zorvane::inspection;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

QByteArray program(const QByteArray &identifier)
{
    return machO({.signature = signature({.identifier = identifier})});
}

/** An application with an icon, localised texts, a nested bundle and a helper. */
void addApplication(const fs::path &bundle)
{
    const fs::path contents = bundle / "Contents";
    writeFile(contents / "Info.plist",
        textPropertyList({{"CFBundleIdentifier", "main"}, {"CFBundleExecutable", "run"},
            {"CFBundleIconFile", "icon"}}));
    writeFile(
        contents / "Resources" / "icon.icns", iconFamily({{"ic07", squarePng(128, Qt::blue)}}));
    writeFile(contents / "Resources" / "en.lproj" / "InfoPlist.strings", "CFBundleName = Name;");
    writeFile(contents / "MacOS" / "run", program("main"), Mode::Executable);
    writeFile(contents / "MacOS" / "tool", program("tool"), Mode::Executable);
    writeInformation(contents / "Helpers" / "Updater.app", "updater", "run");
    writeFile(contents / "Helpers" / "Updater.app" / "Contents" / "MacOS" / "run",
        program("updater"), Mode::Executable);
}

} // namespace

/** One inspector, used by several threads; means most in a build that watches them. */
class TestParallelInspections : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void inspectionsAtOnceFindWhatOneFinds()
    {
        const ScratchFolder scratch;
        const fs::path bundle = scratch.path() / "Tool.app";
        addApplication(bundle);
        const platform::BundleReading reading = platform::makeBundleReading();
        const ApplicationInspector inspector(
            {*reading.bundles, *reading.signatures, *reading.walk, *reading.icons});
        const QUrl url = QUrl::fromLocalFile(QString::fromStdString(bundle.string()));
        const QUuid id = QUuid::createUuid();

        std::array<std::optional<InspectionResult>, 2> results;
        {
            std::vector<std::jthread> threads;
            threads.reserve(results.size());
            for (auto &result : results) {
                threads.emplace_back([&result, &inspector, url, id] {
                    for (int i = 0; i < 10; ++i)
                        result = inspector.inspectApplication(url, id);
                });
            }
        }

        const InspectionResult alone = inspector.inspectApplication(url, id);
        const auto &record = std::get<records::BlockedApplication>(alone);
        QCOMPARE(record.auxiliaryCodeIdentities->size(), 2);
        QVERIFY(record.iconData);
        QVERIFY(results[0] == alone);
        QVERIFY(results[1] == alone);
    }
};

QTEST_GUILESS_MAIN(TestParallelInspections)
#include "tst_parallel_inspections.moc"
