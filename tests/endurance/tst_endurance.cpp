#include "app/app_block_store.h"
#include "platform/platform.h"
#include "platform/simulated/property_list.h"
#include "tests/bundle_files/bundle_files.h"
#include "tests/desktop_bus/private_bus.h"
#include "tests/endurance/fast_scheduler.h"
#include "tests/endurance/resources.h"
#include "tests/long/times.h"
#include "tests/platform/state_folder.h"
#include "tests/signed_code/signed_code.h"
#include "ui/blocked_apps_model.h"

#include <atomic>
#include <cstdio>
#include <QColor>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

constexpr int applicationCount = 8;
constexpr int processCount = 40;
/** Of a day, in the long test. */
constexpr int passesOfADay = 17'280;
constexpr int longestWait = 30'000;
/** Bytes: less than a hundred for each pass of the quick test. */
constexpr size_t tolerance = 65'536;

QByteArray program(const QByteArray &identifier)
{
    return machO({.signature = signature({.identifier = identifier, .team = "TEAM"})});
}

fs::path makeApplication(const fs::path &folder, int number)
{
    const QByteArray name = "app" + QByteArray::number(number);
    fs::path bundle = folder / (name + ".app").toStdString();
    const fs::path contents = bundle / "Contents";
    writeFile(contents / "Info.plist",
        textPropertyList({{"CFBundleIdentifier", "com.example." + name},
            {"CFBundleExecutable", "run"}, {"CFBundleIconFile", "icon"}}));
    writeFile(
        contents / "Resources" / "icon.icns", iconFamily({{"ic07", squarePng(128, Qt::blue)}}));
    writeFile(contents / "MacOS" / "run", program("com.example." + name), Mode::Executable);
    writeFile(contents / "MacOS" / "tool", program("com.example.tool." + name), Mode::Executable);
    return bundle;
}

std::atomic<int> warnings = 0;

/** In the place of the output, which would be the longer part of a day. */
void countMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    ++warnings;
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

} // namespace

/**
 * A day of the program on the real files of a simulated system: every pass finds other processes,
 * some of which a record takes in, and now and then the user changes the list and the switch.
 */
class TestEndurance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("ZORVANE_SYSTEM_DIR", m_state.filePath(QString()).toUtf8());
        qputenv("XDG_DATA_HOME", m_state.filePath(u"data"_s).toUtf8());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        for (const char *proxy : {"http_proxy", "https_proxy", "all_proxy"})
            qputenv(proxy, "http://127.0.0.1:9");
        QVERIFY(QDir().mkpath(m_state.filePath(u"preferences"_s)));
        m_state.behave("{'activationDelay': 0}");
        for (int i = 0; i < applicationCount; ++i)
            m_bundles.push_back(makeApplication(m_scratch.path(), i));
    }

    void memoryHandlesAndThreadsStayFlatOverADay()
    {
        const auto handler = qInstallMessageHandler(countMessage);
        const auto restore = qScopeGuard([handler] { qInstallMessageHandler(handler); });
        auto ports = platform::makePlatform();
        auto scheduler = std::make_unique<FastScheduler>(std::move(ports.scheduler));
        m_time = scheduler.get();
        ports.scheduler = std::move(scheduler);
        app::AppBlockStore store(ports);
        QTRY_VERIFY_WITH_TIMEOUT(store.hasLoadedApplications(), longestWait);
        const ui::BlockedAppsModel rows(store);
        for (int i = 0; i < applicationCount; ++i)
            add(store, i);

        const int passes = timesIfLong(passesOfADay / 20);
        const int warmUp = std::max(200, passes / 10);
        Resources before;
        for (int pass = 0; pass < passes && !QTest::currentTestFailed(); ++pass) {
            if (pass == warmUp)
                before = atTheSamePlace(store);
            live(store, pass);
            show(rows, store);
        }
        compare(before, atTheSamePlace(store));
        QVERIFY(m_merges > passes / 100);
        QVERIFY(m_linesShown > passes);
        QCOMPARE(warnings.load(), 0);
    }

private:
    /** Five seconds of the day. */
    void live(app::AppBlockStore &store, int pass)
    {
        observe(pass);
        QSignalSpy merged(&store, &app::AppBlockStore::applicationsChanged);
        QSignalSpy seen(&store, &app::AppBlockStore::discoveredProcessesChanged);
        QVERIFY(seen.wait(longestWait));
        m_merges += merged.isEmpty() ? 0 : 1;
        m_time->pass(5s);
        if (pass % 20 == 19) {
            // What it has taken in goes with it, so that the list is no longer than at first.
            const int number = pass / 20 % applicationCount;
            remove(store, number);
            add(store, number);
        }
        if (pass % 200 == 149)
            turnOffAndOn(store);
    }

    /** An addition has switched it on before. */
    static void turnOffAndOn(app::AppBlockStore &store)
    {
        using Status = filter::FilterStatus::Kind;
        const auto &controller = *store.filterController();
        QTRY_COMPARE_WITH_TIMEOUT(controller.status().kind(), Status::Enabled, longestWait);
        for (const bool on : {false, true}) {
            store.setProtectionEnabled(on);
            QTRY_COMPARE_WITH_TIMEOUT(
                controller.status().kind(), on ? Status::Enabled : Status::Inactive, longestWait);
            store.refreshProtection();
        }
    }

    /** Asks for everything that the list's rows show. */
    void show(const ui::BlockedAppsModel &rows, const app::AppBlockStore &store)
    {
        const auto &list = store.applications();
        QCOMPARE(rows.rowCount(), int(list.size()));
        const auto roles = rows.roleNames();
        for (int row = 0; row < rows.rowCount(); ++row) {
            for (auto role = roles.keyBegin(); role != roles.keyEnd(); ++role)
                QVERIFY(rows.data(rows.index(row), *role).isValid());
            QCOMPARE(rows.data(rows.index(row), ui::BlockedAppsModel::NameRole), list[row].name);
            m_linesShown += rows.components(row).size();
        }
    }

    /** Other processes at every pass; one in ten has a team and comes from a limited number. */
    void observe(int pass) const
    {
        QList<inspection::DiscoveredNetworkProcess> list;
        for (int i = 0; i < processCount; ++i) {
            const int number = pass + i;
            inspection::DiscoveredNetworkProcess process;
            process.signingIdentifier = u"com.example.helper%1"_s.arg(number % 100);
            if (number % 10 == 0)
                process.teamIdentifier = u"TEAM"_s;
            process.executablePath
                = QString::fromStdString(m_bundles.at(size_t(number % applicationCount)).string())
                + u"/Contents/MacOS/helper%1"_s.arg(number % 100);
            process.lastSeenAt = inspection::referenceSeconds(m_time->now()) - i;
            process.firstSeenAt = process.lastSeenAt - 100;
            process.connectionCount = pass;
            list.append(process);
        }
        const auto error = platform::simulated::replaceFile(
            m_state.path() / "preferences/group.dev.kestrelworks.Zorvane.plist",
            platform::simulated::writePropertyList(
                {{u"discoveredNetworkProcesses.v2"_s, inspection::encodedProcesses(list)}}));
        QVERIFY2(!error, qPrintable(error.value_or(QString())));
    }

    void add(app::AppBlockStore &store, int number) const
    {
        store.addApplication(
            QUrl::fromLocalFile(QString::fromStdString(m_bundles.at(size_t(number)).string())));
        QTRY_VERIFY_WITH_TIMEOUT(!store.isAddingApplication(), longestWait);
        QVERIFY(!store.alertMessage());
    }

    static void remove(app::AppBlockStore &store, int number)
    {
        const QString identifier = u"com.example.app%1"_s.arg(number);
        const auto list = store.applications();
        for (const auto &application : list) {
            if (application.signingIdentifier == identifier)
                store.remove(application);
        }
    }

    /** With the list as the user made it, and all that was begun done. */
    Resources atTheSamePlace(app::AppBlockStore &store) const
    {
        for (int i = 0; i < applicationCount; ++i)
            remove(store, i);
        for (int i = 0; i < applicationCount; ++i)
            add(store, i);
        QTest::qWait(500);
        return Resources::now();
    }

    static void compare(const Resources &before, const Resources &after)
    {
        QTextStream(stdout) << "before and after: " << before.heapBytes / 1024 << " and "
                            << after.heapBytes / 1024 << " KiB, " << before.descriptors << " and "
                            << after.descriptors << " handles, " << before.threads << " and "
                            << after.threads << " threads\n";
        QVERIFY(after.descriptors <= before.descriptors + 1);
        QVERIFY(after.threads <= before.threads);
        // A sanitizer's allocator says nothing here; it looks for leaks by itself.
        QVERIFY(after.heapBytes <= before.heapBytes + tolerance);
    }

    const PrivateBus m_bus;
    const StateFolder m_state{};
    const ScratchFolder m_scratch;
    std::vector<fs::path> m_bundles;
    FastScheduler *m_time = nullptr;
    int m_merges = 0;
    qsizetype m_linesShown = 0;
};

QTEST_MAIN(TestEndurance)
#include "tst_endurance.moc"
