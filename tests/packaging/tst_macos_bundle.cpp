#include "app/records/blocked_application_json.h"
#include "inspection/discovered_processes.h"
#include "platform/simulated/behaviour.h"
#include "platform/simulated/icon_family.h"
#include "platform/simulated/property_list.h"
#include "tests/filter/controller_fixture.h"
#include "tools/icon_family/icon_family_writer.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using platform::simulated::iconOfFamily;

namespace
{

const QString app = QStringLiteral(ZORVANE_BUNDLE);

/** The one extension that a package may have embedded: see tests/packaging/made_bundles.py. */
const QString extensionIdentifier = u"dev.kestrelworks.Zorvane.FilterExtension"_s;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVariantMap propertyList(const QString &path)
{
    return platform::simulated::readPropertyList(contentOf(path)).toMap();
}

QVariantMap information()
{
    return propertyList(app + u"/Contents/Info.plist"_s);
}

QVariantMap entitlements()
{
    return propertyList(
        QStringLiteral(ZORVANE_SOURCE) + u"/packaging/macos/Zorvane.entitlements"_s);
}

QByteArray svg()
{
    return contentOf(QStringLiteral(ZORVANE_SOURCE) + u"/ui/icons/appicon-inset.svg"_s);
}

/** What zorvane-inspect prints for the bundle; its icon is written to @p iconFile. */
QByteArray inspected(const QString &iconFile)
{
    QProcess process;
    process.start(QStringLiteral(ZORVANE_INSPECT), {u"--icon"_s, iconFile, app});
    if (!process.waitForFinished() || process.exitCode() != 0)
        return process.readAllStandardError();
    return process.readAllStandardOutput();
}

} // namespace

/** The bundle as far as it is made without a Mac, and what the programs ask of it. */
class TestMacosBundle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theInspectorReadsTheBundle()
    {
        const QTemporaryDir folder;
        const QString iconFile = folder.filePath(u"icon.png"_s);
        const QByteArray line = inspected(iconFile);
        const auto read = records::decodedApplications("[" + line + "]");
        QVERIFY2(read, line.constData());
        const records::BlockedApplication &application = read->first();
        QCOMPARE(application.name, u"Zorvane"_s);
        QCOMPARE(application.bundleIdentifier, u"dev.kestrelworks.Zorvane"_s);
        QCOMPARE(application.path, app);
        // By the linker, with the names of the programs that stand in.
        QCOMPARE(application.signingIdentifier, u"Zorvane"_s);
        QVERIFY(application.auxiliaryCodeIdentities);
        const QList<records::CodeIdentity> agent{{u"zorvane-update-agent"_s, std::nullopt}};
        QCOMPARE(*application.auxiliaryCodeIdentities, agent);

        const QImage icon(iconFile, "PNG");
        QCOMPARE(icon.size(), QSize(128, 128));
        // The corners are open; the middle is the picture's.
        QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(icon.pixelColor(64, 64).alpha(), 255);
    }

    void theVersionsAreThoseOfTheBuild()
    {
        QCOMPARE(information().value(u"CFBundleShortVersionString"_s).toString(),
            QStringLiteral(ZORVANE_VERSION));
        // A whole number, which the update check compares.
        bool isNumber = false;
        QVERIFY(information().value(u"CFBundleVersion"_s).toString().toInt(&isNumber) > 0);
        QVERIFY(isNumber);
    }

    void theOldestSystemIsTheOneThatHasTheLoginItems()
    {
        QCOMPARE(information().value(u"LSMinimumSystemVersion"_s).toString(), u"13.0"_s);
    }

    void theSimulatedSystemHasTheSameIdentity()
    {
        const platform::simulated::Behaviour behaviour = platform::simulated::standardBehaviour();
        QCOMPARE(
            behaviour.bundleIdentifier, information().value(u"CFBundleIdentifier"_s).toString());
        QCOMPARE(behaviour.shortVersion,
            information().value(u"CFBundleShortVersionString"_s).toString());
        QCOMPARE(behaviour.applicationGroups,
            entitlements().value(u"com.apple.security.application-groups"_s).toStringList());
    }

    void theProgramReadsTheGroupThatItIsEntitledTo()
    {
        tests::FakeEntitlements entitled;
        entitled.groups
            = entitlements().value(u"com.apple.security.application-groups"_s).toStringList();
        // One that comes first and is not meant: the name has to tell ours apart.
        entitled.groups->prepend(u"group.com.example.Other"_s);
        tests::FakeSuites suites;
        const inspection::DiscoveredProcesses processes({entitled, suites});
        QCOMPARE(processes.resolveApplicationGroup(), u"group.dev.kestrelworks.Zorvane"_s);
    }

    void theFilterAsksForTheExtensionThatCanBeEmbedded()
    {
        tests::ControllerFixture fixture;
        fixture.mainBundle.bundleIdentifier
            = information().value(u"CFBundleIdentifier"_s).toString();
        fixture.controller->requestActivation({}, {});
        QCOMPARE(fixture.extensions.submitted, QStringList{extensionIdentifier});
    }

    void theIconHasAllSizes_data()
    {
        QTest::addColumn<int>("side");
        for (const int side : tools::iconFamilySides())
            QTest::addRow("%d", side) << side;
    }

    void theIconHasAllSizes()
    {
        QFETCH(int, side);
        const QByteArray file = contentOf(app + u"/Contents/Resources/Zorvane.icns"_s);
        const QImage icon = iconOfFamily(file, side);
        QCOMPARE(icon.size(), QSize(side, side));
        const QImage drawn = iconOfFamily(tools::iconFamilyOf(svg()), side);
        QCOMPARE(icon, drawn);
        QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(icon.pixelColor(side / 2, side / 2).alpha(), 255);
    }

    void theIconHasEachSizeForBothResolutions()
    {
        const QByteArray file = contentOf(app + u"/Contents/Resources/Zorvane.icns"_s);
        QByteArrayList types;
        for (qsizetype at = 8; at + 8 <= file.size();) {
            types.append(file.mid(at, 4));
            at += qsizetype(qFromBigEndian<quint32>(file.constData() + at + 4));
        }
        const QByteArrayList wanted{"is32", "s8mk", "il32", "l8mk", "ic11", "ic12", "ic07", "ic13",
            "ic08", "ic14", "ic09", "ic10"};
        QCOMPARE(types, wanted);
    }

    void whatIsNoPictureMakesNoIcon_data()
    {
        QTest::addColumn<QByteArray>("svg");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("text") << QByteArray("a picture");
        QTest::newRow("another document") << QByteArray("<html/>");
    }

    void whatIsNoPictureMakesNoIcon()
    {
        QFETCH(QByteArray, svg);
        QCOMPARE(tools::iconFamilyOf(svg), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestMacosBundle)
#include "tst_macos_bundle.moc"
