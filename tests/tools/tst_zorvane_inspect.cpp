#include "app/records/blocked_application_json.h"
#include "app/records/code_identity.h"
#include "tests/bundle_files/bundle_files.h"
#include "tests/signed_code/signed_code.h"

#include <QColor>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QtEndian>
#include <QTest>
#include <zlib.h>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

const QByteArray team = "ABCDE12345";

struct Outcome {
    int status;
    QByteArray output;
    QByteArray complaints;
};

Outcome run(const QStringList &arguments, const fs::path &folder = "/")
{
    QProcess process;
    process.setWorkingDirectory(QString::fromStdString(folder.string()));
    process.start(QStringLiteral(ZORVANE_INSPECT), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, {}};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

QByteArray program(const QByteArray &identifier, const std::optional<QByteArray> &signingTeam)
{
    return machO({.signature = signature({.identifier = identifier, .team = signingTeam})});
}

/** A PNG with @p profile as its colour profile. */
QByteArray pngWithProfile(const QByteArray &profile)
{
    const auto number = [](quint32 value) {
        QByteArray bytes(4, 0);
        qToBigEndian(value, bytes.data());
        return bytes;
    };
    // Compressed bytes stand behind their length there.
    const QByteArray content = "iCCPname" + QByteArray(2, 0) + qCompress(profile).sliced(4);
    const auto sum = quint32(
        ::crc32(0, reinterpret_cast<const Bytef *>(content.constData()), uInt(content.size())));
    QByteArray png = squarePng(200, Qt::red);
    return png.insert(
        png.indexOf("IDAT") - 4, number(quint32(content.size() - 4)) + content + number(sum));
}

} // namespace

class TestZorvaneInspect : public QObject
{
    Q_OBJECT

private:
    QString path(const char *name) const
    {
        return QString::fromStdString((m_scratch->path() / name).string());
    }

    void addApplication(const char *name, const QByteArray &identifier) const
    {
        const fs::path bundle = m_scratch->path() / name;
        writeFile(bundle / "Contents" / "Info.plist",
            textPropertyList({{"CFBundleIdentifier", identifier}, {"CFBundleExecutable", "run"},
                {"CFBundleIconFile", "icon.png"}}));
        writeFile(
            bundle / "Contents" / "MacOS" / "run", program(identifier, team), Mode::Executable);
        writeFile(bundle / "Contents" / "Resources" / "icon.png", squarePng(200, Qt::red));
    }

    void addHelper(const char *place, const QByteArray &identifier,
        const std::optional<QByteArray> &signingTeam) const
    {
        writeFile(m_scratch->path() / "Tool.app" / "Contents" / place,
            program(identifier, signingTeam), Mode::Executable);
    }

    std::unique_ptr<ScratchFolder> m_scratch;

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchFolder>();
        addApplication("Tool.app", "com.example.Tool");
    }

    void aLineIsTheRecordAndWhatItBlocks()
    {
        addHelper("Helpers/a", "com.example.Helper", team);
        addHelper("Helpers/b", "com.example.NoTeam", std::nullopt);
        addHelper("Helpers/c", "python3", team);
        addHelper("Helpers/d", "dev.kestrelworks.Zorvane.Helper", team);
        const Outcome outcome = run({path("Tool.app")});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.complaints, QByteArray());
        QCOMPARE(outcome.output.count('\n'), 1);

        const auto read = records::decodedApplications("[" + outcome.output + "]");
        QVERIFY(read);
        const records::BlockedApplication &application = read->first();
        QCOMPARE(application.name, u"Tool"_s);
        QCOMPARE(application.path, path("Tool.app"));
        QCOMPARE(application.bundleIdentifier, u"com.example.Tool"_s);
        QCOMPARE(application.auxiliaryCodeIdentities->size(), 4);

        const QJsonObject object = QJsonDocument::fromJson(outcome.output).object();
        const auto key = [](const QString &identifier) {
            return records::identityKey({identifier, QString::fromLatin1(team)});
        };
        QCOMPARE(object.value(u"blockedCodeIdentities"_s).toArray(),
            QJsonArray({key(u"com.example.Tool"_s), key(u"com.example.Helper"_s)}));
    }

    void aRefusedBundleIsNamedAndTheOthersArePrinted()
    {
        addApplication("Other.app", "com.example.Other");
        const Outcome outcome = run({path("Tool.app"), path("Missing.app"), path("Other.app/")});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.complaints,
            path("Missing.app").toUtf8() + ": Drop an application with the .app extension.\n");
        QCOMPARE(outcome.output.count('\n'), 2);
        const auto read
            = records::decodedApplications("[" + outcome.output.trimmed().replace('\n', ',') + "]");
        QVERIFY(read);
        QCOMPARE(read->at(0).name, u"Tool"_s);
        QCOMPARE(read->at(1).path, path("Other.app"));
    }

    void relativePathsAreMadeWhole()
    {
        const Outcome outcome = run({u"./x/../Tool.app/"_s}, m_scratch->path());
        QCOMPARE(outcome.status, 0);
        QCOMPARE(records::decodedApplications("[" + outcome.output + "]")->first().path,
            path("Tool.app"));
    }

    void theIconIsWrittenToTheFile()
    {
        const Outcome outcome = run({u"--icon"_s, path("icon.png"), path("Tool.app")});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output.count('\n'), 1);
        const QImage icon(path("icon.png"), "PNG");
        QCOMPARE(icon.size(), QSize(128, 128));
        QCOMPARE(icon.pixelColor(64, 64), QColor(Qt::red));
    }

    void anIconThatIsNotThereIsAComplaint()
    {
        fs::remove(m_scratch->path() / "Tool.app" / "Contents" / "Resources" / "icon.png");
        const Outcome outcome = run({u"--icon"_s, path("icon.png"), path("Tool.app")});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.complaints.contains("no icon"));
        QCOMPARE(outcome.output.count('\n'), 1);
        QVERIFY(!fs::exists(path("icon.png").toStdString()));
    }

    void aDamagedIconIsLeftOutWithoutAWord_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isDrawn");
        const QByteArray png = squarePng(200, Qt::red);
        QByteArray wrongSum = png;
        wrongSum[wrongSum.indexOf("IHDR") + 17] ^= 1;
        QTest::newRow("end within the pixels") << png.first(png.indexOf("IDAT") + 20) << false;
        QTest::newRow("end within the header") << png.first(20) << false;
        QTest::newRow("wrong check sum") << wrongSum << false;
        QTest::newRow("no colours")
            << iconFamily({{"it32", "xx"}, {"t8mk", QByteArray(qsizetype{128} * 128, 1)}}) << false;
        QTest::newRow("no family") << QByteArray("icns\0\0\0\x10is32\xFF\xFF\xFF\xFF", 16) << false;
        // What Qt makes of a profile is all that is wrong here.
        QTest::newRow("profile of nonsense") << pngWithProfile(QByteArray(200, 'x')) << true;
    }

    void aDamagedIconIsLeftOutWithoutAWord()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, isDrawn);
        writeFile(m_scratch->path() / "Tool.app" / "Contents" / "Resources" / "icon.png", bytes);
        const Outcome outcome = run({path("Tool.app")});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.complaints, QByteArray());
        QCOMPARE(
            records::decodedApplications("[" + outcome.output + "]")->first().iconData.has_value(),
            isDrawn);
    }

    void anIconThatCannotBeWrittenIsAComplaint()
    {
        const Outcome outcome = run({u"--icon"_s, path("missing/icon.png"), path("Tool.app")});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.complaints.contains("missing/icon.png"));
    }

    void outputThatCannotBeWrittenIsAComplaint()
    {
        QProcess process;
        process.setStandardOutputFile(u"/dev/full"_s);
        process.start(QStringLiteral(ZORVANE_INSPECT), {path("Tool.app")});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(!process.readAllStandardError().isEmpty());
    }

    void wrongUsageIsToldApart_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList();
        QTest::newRow("unknown option") << QStringList{u"--all"_s, u"/x.app"_s};
        QTest::newRow("icon without file") << QStringList{u"/x.app"_s, u"--icon"_s};
        QTest::newRow("icon without bundle") << QStringList{u"--icon"_s, u"x.png"_s};
        QTest::newRow("icon of two")
            << QStringList{u"--icon"_s, u"x.png"_s, u"/x.app"_s, u"/y.app"_s};
    }

    void wrongUsageIsToldApart()
    {
        QFETCH(QStringList, arguments);
        const Outcome outcome = run(arguments);
        QCOMPARE(outcome.status, 2);
        QCOMPARE(outcome.output, QByteArray());
        QVERIFY(outcome.complaints.contains("Usage:"));
    }

    void helpIsNoFailure()
    {
        const Outcome outcome = run({u"--help"_s});
        QCOMPARE(outcome.status, 0);
        QVERIFY(outcome.output.contains("--icon"));
    }
};

QTEST_GUILESS_MAIN(TestZorvaneInspect)
#include "tst_zorvane_inspect.moc"
