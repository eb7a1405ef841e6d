#include "inspection/application_inspector.h"
#include "opened_files.h"
#include "platform/bundle_reading.h"
#include "tests/bundle_files/bundle_files.h"
#include "tests/long/times.h"
#include "tests/signed_code/signed_code.h"
#include "watched_reading.h"

#include <fcntl.h>
#include <iterator>
#include <QDeadlineTimer>
#include <QTest>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::inspection;
using namespace zorvane::tests;
using records::BlockedApplication;
namespace fs = std::filesystem;

namespace
{

const QByteArray team = "ABCDE12345";

QByteArray program(const QByteArray &identifier)
{
    return machO({.signature = signature({.identifier = identifier, .team = team})});
}

/** Early, late, and in between, of some hundred items. */
void someMoments()
{
    QTest::addColumn<int>("moment");
    for (const int moment : {0, 1, 3, 10, 40, 55})
        QTest::addRow("after %d items", moment) << moment;
}

} // namespace

/** Bundles made to hang, exhaust or mislead whoever reads them, through this system's ports. */
class TestHostileBundles : public QObject
{
    Q_OBJECT

private:
    [[nodiscard]] fs::path in(const std::string &place) const { return m_app / "Contents" / place; }

    void addProgram(const std::string &place, const QByteArray &identifier) const
    {
        writeFile(in(place), program(identifier), Mode::Executable);
    }

    [[nodiscard]] InspectionResult inspect(
        const platform::DirectoryWalk &walk, const platform::CodeSignatures &signatures) const
    {
        return ApplicationInspector({*m_reading.bundles, signatures, walk, *m_reading.icons})
            .inspectApplication(
                QUrl::fromLocalFile(QString::fromStdString(m_app.string())), QUuid::createUuid());
    }
    [[nodiscard]] InspectionResult inspect() const
    {
        return inspect(*m_reading.walk, *m_reading.signatures);
    }

    /** The signing identifiers of the helpers; "refused" if there is no record. */
    [[nodiscard]] static QStringList helpersIn(const InspectionResult &result)
    {
        const auto *record = std::get_if<BlockedApplication>(&result);
        if (record == nullptr)
            return {u"refused"_s};
        QStringList identifiers;
        for (const auto &identity : record->auxiliaryCodeIdentities.value())
            identifiers.append(identity.signingIdentifier);
        return identifiers;
    }
    [[nodiscard]] QStringList helpers() const { return helpersIn(inspect()); }
    [[nodiscard]] QStringList helpers(const platform::DirectoryWalk &walk) const
    {
        return helpersIn(inspect(walk, *m_reading.signatures));
    }

    platform::BundleReading m_reading;
    std::unique_ptr<ScratchFolder> m_scratch;
    fs::path m_app;

private Q_SLOTS:
    void initTestCase() { m_reading = platform::makeBundleReading(); }

    void init()
    {
        m_scratch = std::make_unique<ScratchFolder>();
        m_app = m_scratch->path() / "Hostile.app";
        writeInformation(m_app, "com.example.Hostile", "run");
        addProgram("MacOS/run", "com.example.Hostile");
        addProgram("Helpers/tool", "tool");
    }

    void linksThatLeadInCirclesEnd_data()
    {
        QTest::addColumn<std::string>("place");
        QTest::addColumn<QStringList>("found");
        QTest::newRow("main executable") << std::string("MacOS/run") << QStringList{u"refused"_s};
        QTest::newRow("information") << std::string("Info.plist") << QStringList{u"refused"_s};
        QTest::newRow("helper") << std::string("Helpers/tool") << QStringList();
        QTest::newRow("icons") << std::string("Resources") << QStringList{u"tool"_s};
    }

    void linksThatLeadInCirclesEnd()
    {
        QFETCH(std::string, place);
        QFETCH(QStringList, found);
        fs::remove_all(in(place));
        fs::create_symlink("two", in("one"));
        fs::create_symlink("one", in("two"));
        fs::create_symlink(in("one"), in(place));
        QCOMPARE(helpers(), found);
    }

    void aFolderOfVeryManyFilesIsReadToItsEnd()
    {
        const int count = timesIfLong(5'000);
        for (int i = 0; i < count; ++i)
            writeFile(in("Helpers/" + std::to_string(i)), "#!/bin/sh\n",
                i % 2 == 0 ? Mode::Executable : Mode::Plain);
        addProgram("Helpers/zz", "last");
        const WatchedWalk walk(*m_reading.walk, [](int) {});
        QCOMPARE(helpers(walk), (QStringList{u"last"_s, u"tool"_s}));
        // None of them twice: a second look at each folder's files would take for ever.
        const auto items = fs::recursive_directory_iterator(m_app);
        QCOMPARE(walk.items(), int(std::distance(begin(items), end(items))));
    }

    void aThousandLevelsAreReadToTheBottom()
    {
        std::string place = "Helpers";
        for (int level = 0; level < 1'000; ++level)
            place += "/d";
        addProgram(place + "/bottom", "bottom");
        QCOMPARE(helpers(), (QStringList{u"bottom"_s, u"tool"_s}));
    }

    void namesOfEveryLengthAndOfNoTextAreRead()
    {
        constexpr size_t longest = 255;
        addProgram("Helpers/" + std::string(longest, 'n'), "long");
        addProgram(
            "Helpers/" + std::string(longest - 4, 'b') + ".app/Contents/MacOS/run", "nested");
        writeInformation(in("Helpers/" + std::string(longest - 4, 'b') + ".app"), "nested", "run");
        addProgram("Helpers/\xff\xfe\x80", "no text");
        addProgram("Helpers/line\nbreak", "line break");
        QCOMPARE(helpers(),
            (QStringList{u"line break"_s, u"long"_s, u"nested"_s, u"no text"_s, u"tool"_s}));
    }

    void pipesSocketsAndDevicesInHelperFoldersAreNeverOpened()
    {
        const OpenedFiles opened;
        QCOMPARE(::mkfifo(in("MacOS/pipe").c_str(), 0777), 0);
        QVERIFY(opened.watch(in("MacOS/pipe")));
        // Only root can make one.
        if (::mknod(in("Helpers/device").c_str(), S_IFCHR | 0777, makedev(1, 3)) == 0)
            QVERIFY(opened.watch(in("Helpers/device")));
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        const std::string socketPath = (m_app / "Contents/Helpers/socket").string();
        QVERIFY(socketPath.size() < sizeof address.sun_path);
        socketPath.copy(address.sun_path, socketPath.size());
        const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        QCOMPARE(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        QVERIFY(opened.watch(in("Helpers/socket")));

        QCOMPARE(helpers(), QStringList{u"tool"_s});
        QVERIFY(!opened.any());
        // The watch would have told.
        ::close(::open(in("MacOS/pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
        QVERIFY(opened.any());
        ::close(socket);
    }

    void filesThatChangeWhileTheyAreReadAreFoundOrNot()
    {
        addProgram("Helpers/changing", "changing");
        const ChangingProgram changing(in("Helpers/changing"), program("changing"));
        // The folders are read while it changes,
        constexpr int some = 4;
        const WatchedWalk walk(*m_reading.walk,
            [&](int before) { before % some == 0 ? changing.awaitChange() : void(); });
        // and so is the file itself, in as many rounds as it takes for that.
        int changedWhileRead = 0;
        const WatchedSignatures signatures(*m_reading.signatures, [&](const auto &reading) {
            const int before = changing.changes();
            reading.perform();
            const bool isOfIt = reading.path.filename() == "changing";
            changedWhileRead += isOfIt && changing.changes() != before ? 1 : 0;
        });
        const int rounds = timesIfLong(40);
        const QDeadlineTimer patience(30'000);
        for (int i = 0; i < rounds || (changedWhileRead == 0 && !patience.hasExpired()); ++i) {
            const QStringList found = helpersIn(inspect(walk, signatures));
            QVERIFY2(
                found == QStringList{u"tool"_s} || found == (QStringList{u"changing"_s, u"tool"_s}),
                qPrintable(found.join(u' ')));
        }
        QVERIFY(walk.items() >= some * rounds);
        QVERIFY(changedWhileRead > 0);
    }

    void aBundleThatVanishesBetweenTheReadingsIsReadAsFarAsItWas_data()
    {
        QTest::addColumn<int>("moment");
        for (const int moment : {1, 2, 3, 5, 6})
            QTest::addRow("after %d readings", moment) << moment;
    }

    void aBundleThatVanishesBetweenTheReadingsIsReadAsFarAsItWas()
    {
        QFETCH(int, moment);
        for (const char *name : {"one", "two", "three", "four"})
            addProgram(std::string("Helpers/") + name, name);
        const WatchedSignatures signatures(*m_reading.signatures, [&](const auto &reading) {
            if (reading.before == moment)
                fs::remove_all(m_app);
            reading.perform();
        });
        const InspectionResult result = inspect(*m_reading.walk, signatures);
        // The application itself, its main executable, and five helpers.
        QCOMPARE(signatures.readings(), 7);
        const auto *record = std::get_if<BlockedApplication>(&result);
        QVERIFY(record != nullptr);
        QCOMPARE(record->signingIdentifier, u"com.example.Hostile"_s);
        // The main executable is read among the helpers, and is none.
        const auto found = record->auxiliaryCodeIdentities.value().size();
        QVERIFY(found == moment - 1 || found == moment - 2);
        QCOMPARE(inspect(), InspectionResult(ApplicationInspectionError::NotAnApplication));
    }

    void aBundleThatVanishesBeforeItsSignatureIsReadIsRefused()
    {
        const WatchedSignatures signatures(*m_reading.signatures, [&](const auto &reading) {
            fs::remove_all(m_app);
            reading.perform();
        });
        QCOMPARE(inspect(*m_reading.walk, signatures),
            InspectionResult(ApplicationInspectionError::UnsignedApplication));
        QCOMPARE(signatures.readings(), 1);
    }

    void aBundleThatVanishesHalfWayIsReadAsFarAsItWas_data() { someMoments(); }

    void aBundleThatVanishesHalfWayIsReadAsFarAsItWas()
    {
        QFETCH(int, moment);
        for (int i = 0; i < 50; ++i)
            addProgram("Helpers/deep/" + std::to_string(i), "deep");
        const WatchedWalk walk(*m_reading.walk, [&](int before) {
            if (before == moment)
                fs::remove_all(m_app);
        });
        const InspectionResult result = inspect(walk, *m_reading.signatures);
        QVERIFY(walk.items() > moment);
        const auto *record = std::get_if<BlockedApplication>(&result);
        QVERIFY(record != nullptr);
        QCOMPARE(record->signingIdentifier, u"com.example.Hostile"_s);
        QCOMPARE(record->auxiliaryCodeIdentities.value(), QList<records::CodeIdentity>());
        QCOMPARE(inspect(), InspectionResult(ApplicationInspectionError::NotAnApplication));
    }

    void aBundleThatGrowsWhileItIsReadEnds_data() { someMoments(); }

    void aBundleThatGrowsWhileItIsReadEnds()
    {
        QFETCH(int, moment);
        for (int i = 0; i < 50; ++i)
            addProgram("Helpers/deep/" + std::to_string(i), "deep");
        int grown = 0;
        const WatchedWalk walk(*m_reading.walk, [&](int before) {
            for (; before >= moment && grown < 500; ++grown)
                addProgram("Helpers/new/" + std::to_string(grown), "new");
        });
        const QStringList found = helpers(walk);
        QCOMPARE(grown, 500);
        QVERIFY2(found == (QStringList{u"deep"_s, u"tool"_s})
                || found == (QStringList{u"deep"_s, u"new"_s, u"tool"_s}),
            qPrintable(found.join(u' ')));
    }

    void aBundleThatMayNotBeEnteredIsRefused()
    {
        fs::permissions(m_app, fs::perms::none);
        const OrdinaryUser user(m_scratch->path());
        QCOMPARE(inspect(), InspectionResult(ApplicationInspectionError::NotAnApplication));
    }
};

QTEST_GUILESS_MAIN(TestHostileBundles)
#include "tst_hostile_bundles.moc"
