// How long the main loop of the real program is held up while bundles are inspected beside it.

#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "bench/large_bundle.h"
#include "bench/report.h"
#include "tests/bundle_files/bundle_files.h"
#include "ui/user_interface.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTimer>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane;
namespace fs = std::filesystem;

namespace
{

using Clock = std::chrono::steady_clock;

constexpr int rounds = 3;
constexpr int applicationCount = 500;
/** How much longer a turn may be than at rest, in milliseconds: a frame. */
constexpr double allowance = 16;
constexpr auto frameInterval = 16ms;
constexpr auto longestWait = 60s;

/**
 * Lets the program run, and draw all the time, until @p done says so. Returns the longest turn of
 * the main loop in milliseconds: from when it is given control to when nothing more is to be done.
 */
template <typename Condition>
double runUntil(QQuickWindow &window, Condition done)
{
    QTimer frames;
    QObject::connect(&frames, &QTimer::timeout, &window, &QQuickWindow::update);
    frames.start(frameInterval);
    double longest = 0;
    const auto deadline = Clock::now() + longestWait;
    while (!done()) {
        const auto begin = Clock::now();
        if (begin > deadline)
            qFatal("what is measured did not end");
        QCoreApplication::processEvents();
        const std::chrono::duration<double, std::milli> passed = Clock::now() - begin;
        longest = std::max(longest, passed.count());
        std::this_thread::sleep_for(500us);
    }
    return longest;
}

/** The program as it starts. */
struct Program {
    Program() { views.show(); }

    platform::Platform platform = platform::makePlatform();
    app::AppBlockStore store{platform};
    ui::UserInterface views{store, platform};
};

/** What the program finds stored when it starts. */
void prepare(const QList<records::BlockedApplication> &applications)
{
    const platform::Platform platform = platform::makePlatform();
    // The guide would stand over the list.
    platform.preferences->setBoolean(u"hasCompletedOnboarding"_s, true);
    platform.preferences->setData(
        u"blockedApplications"_s, records::encodedApplications(applications));
    platform.preferences->synchronize();
}

QList<records::BlockedApplication> staleApplications(const fs::path &folder)
{
    QList<records::BlockedApplication> list;
    for (int i = 0; i < applicationCount; ++i) {
        records::BlockedApplication record;
        record.id = QUuid::createUuid();
        record.name = u"Application %1"_s.arg(i);
        record.bundleIdentifier = record.signingIdentifier = u"com.example.application%1"_s.arg(i);
        record.path = QString::fromStdString(folder / std::to_string(i)) + u".app"_s;
        record.inspectionVersion = records::currentInspectionVersion - 1;
        list.append(record);
    }
    return list;
}

/** The longest turn while the window only draws. */
double turnAtRest(QQuickWindow &window)
{
    const auto end = Clock::now() + 1s;
    return runUntil(window, [&] { return Clock::now() > end; });
}

bench::Pair compared(const std::vector<double> &busy, const std::vector<double> &rest)
{
    return {bench::median(busy), bench::median(rest) + allowance};
}

/** What was stored knows of no team; what a bundle's signature says does. */
bool isReinspected(const records::BlockedApplication &application)
{
    return application.teamIdentifier.has_value();
}

/** Until the list is shown and its rules are with the filter: nothing of that is to be measured. */
void settle(Program &program)
{
    QQuickWindow &window = *program.views.window();
    runUntil(window, [&] { return program.store.hasLoadedApplications(); });
    program.store.setProtectionEnabled(true);
    runUntil(window, [&] { return program.store.isProtectionEnabled(); });
}

bench::Pair whileReinspecting(const fs::path &scratch)
{
    const fs::path folder = scratch / "Applications";
    const fs::path elsewhere = scratch / "Elsewhere";
    for (int i = 0; i < applicationCount; ++i)
        bench::writeSmallBundle(elsewhere / (std::to_string(i) + ".app"), i);
    std::vector<double> busy;
    std::vector<double> rest;
    for (int round = 0; round < rounds; ++round) {
        prepare(staleApplications(folder));
        Program program;
        QQuickWindow &window = *program.views.window();
        settle(program);
        rest.push_back(turnAtRest(window));
        if (!std::ranges::all_of(program.store.applications(), records::isStale))
            qFatal("the applications were made current before they should be");
        // As they are loaded they are not there; now they can be inspected.
        fs::rename(elsewhere, folder);
        QTimer::singleShot(0, &program.store, &app::AppBlockStore::reinspectStaleApplications);
        const double turn = runUntil(window,
            [&] { return std::ranges::all_of(program.store.applications(), isReinspected); });
        busy.push_back(std::max(turn, turnAtRest(window)));
        fs::rename(folder, elsewhere);
    }
    return compared(busy, rest);
}

bench::Pair whileInspecting(const fs::path &bundle)
{
    bench::writeLargeBundle(bundle);
    const auto url = QUrl::fromLocalFile(QString::fromStdString(bundle));
    Program program;
    QQuickWindow &window = *program.views.window();
    turnAtRest(window);
    std::vector<double> busy;
    std::vector<double> rest;
    for (int round = 0; round < rounds; ++round) {
        rest.push_back(turnAtRest(window));
        QTimer::singleShot(0, &program.store, [&] { program.store.addApplication(url); });
        const double turn
            = runUntil(window, [&] { return !program.store.applications().isEmpty(); });
        busy.push_back(std::max(turn, turnAtRest(window)));
        program.store.remove(program.store.applications().first());
    }
    return compared(busy, rest);
}

} // namespace

int main(int argc, char *argv[])
{
    const tests::ScratchFolder scratch;
    ::setenv("ZORVANE_SYSTEM_DIR", (scratch.path() / "system").c_str(), 1);
    const QGuiApplication application(argc, argv);
    prepare({});
    bench::report("longest turn of the main loop, 50,000 files being inspected",
        "at rest, and 16 ms", whileInspecting(scratch.path() / "Large.app"), "ms", 1);
    bench::report("longest turn of the main loop, 500 applications being re-inspected",
        "at rest, and 16 ms", whileReinspecting(scratch.path()), "ms", 1);
    return EXIT_SUCCESS;
}
