// How long the window takes for one frame while a long list scrolls, while a row unfolds many
// components, and while boxes come and go over the window.

#include "app/records/blocked_application_json.h"
#include "bench/report.h"
#include "tests/ui/window_fixture.h"

#include <cstdlib>
#include <ctime>
#include <functional>
#include <QGuiApplication>
#include <QTest>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;
using namespace zorvane;

namespace
{

constexpr int rounds = 5;
constexpr int applicationCount = 500;
constexpr int helperCount = 499;
constexpr double frameBudget = 1000.0 / 60;
constexpr size_t steps = 20;
constexpr double late = 25;
constexpr double lateShare = 0.05;

/** Milliseconds that the processor has worked for this program. */
double processorTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/** Milliseconds of work for one change of the scene, with all that it takes to show it. */
template <typename Change>
double frame(const tests::WindowFixture &fixture, Change change)
{
    const double start = processorTime();
    change();
    QCoreApplication::processEvents();
    bench::keep(fixture.window()->grabWindow());
    return processorTime() - start;
}

/** A sequence of frames, several times. */
class Frames
{
public:
    void add(size_t number, double milliseconds)
    {
        if (m_frames.size() <= number)
            m_frames.resize(number + 1);
        m_frames[number].push_back(milliseconds);
    }

    /** Of each frame the median of the rounds. */
    [[nodiscard]] double longest() const
    {
        double result = 0;
        for (const auto &frame : m_frames)
            result = std::max(result, bench::median(frame));
        return result;
    }

    /** How many of all frames are late. */
    [[nodiscard]] bench::Pair lateOnes() const
    {
        bench::Pair result{0, 0};
        for (const auto &frame : m_frames) {
            result.measured += static_cast<double>(std::ranges::count_if(
                frame, [](double milliseconds) { return milliseconds > late; }));
            result.reference += static_cast<double>(frame.size());
        }
        return result;
    }

private:
    std::vector<std::vector<double>> m_frames;
};

QList<tests::SampleApplication> manyApplications()
{
    QList<tests::SampleApplication> applications;
    for (int i = 0; i < applicationCount; ++i)
        applications.append({u"Application %1"_s.arg(i), u"com.example.application%1"_s.arg(i),
            u"ABCDE12345"_s, std::nullopt});
    return applications;
}

Frames scrolling()
{
    const tests::WindowFixture fixture(manyApplications());
    QQuickItem *const page = fixture.item(u"page"_s);
    Frames frames;
    const auto scrollTo = [&](int position) {
        return frame(fixture, [&] { page->setProperty("contentY", position * 120); });
    };
    for (int round = 0; round < rounds; ++round) {
        // The way back to the top is a jump, and no part of it.
        scrollTo(0);
        // As fast as a wheel is turned.
        for (int position = 1; position <= 100; ++position)
            frames.add(static_cast<size_t>(position - 1), scrollTo(position));
    }
    return frames;
}

records::BlockedApplication largeApplication()
{
    records::BlockedApplication record;
    record.id = QUuid::createUuid();
    record.name = u"A large one"_s; // the first of the list
    record.bundleIdentifier = record.signingIdentifier = u"com.example.large"_s;
    record.path = u"/Applications/Large.app"_s;
    record.inspectionVersion = records::currentInspectionVersion;
    QList<records::CodeIdentity> helpers;
    for (int i = 0; i < helperCount; ++i)
        helpers.append({u"com.example.large.helper%1"_s.arg(i), u"ABCDE12345"_s});
    record.auxiliaryCodeIdentities = helpers;
    return record;
}

Frames unfolding()
{
    tests::WindowFixture fixture(manyApplications());
    fixture.store->add(largeApplication());
    fixture.settle();
    QQuickItem *const disclosure = fixture.item(u"disclosure"_s);
    if (disclosure->property("text").toString() != u"500 network processes"_s)
        qFatal("the large application is not the first of the list");
    Frames frames;
    for (int round = 0; round < rounds; ++round) {
        frames.add(0, frame(fixture, [&] { fixture.click(disclosure); }));
        for (size_t step = 1; step < steps; ++step)
            frames.add(step, frame(fixture, [] { QTest::qSleep(10); }));
        fixture.click(disclosure);
        QTest::qWait(500);
    }
    return frames;
}

/** The frames of one box that comes, or goes. */
void addTransition(Frames &frames, size_t first, const tests::WindowFixture &fixture,
    const std::function<void()> &start)
{
    frames.add(first, frame(fixture, start));
    for (size_t step = 1; step < steps; ++step)
        frames.add(first + step, frame(fixture, [] { QTest::qSleep(10); }));
}

Frames transitions()
{
    tests::WindowFixture fixture(manyApplications());
    if (!QTest::qWaitForWindowActive(fixture.window()))
        qFatal("the main window has no keyboard");
    Frames frames;
    for (int round = 0; round < rounds; ++round) {
        size_t first = 0;
        const auto add = [&](const std::function<void()> &start) {
            addTransition(frames, std::exchange(first, first + steps), fixture, start);
        };
        add([&] { fixture.click(fixture.button(u"Show getting started"_s)); });
        add([&] { QTest::keyClick(fixture.window(), Qt::Key_Escape); });
        add([&] { fixture.raiseAlert(); });
        add([&] { fixture.store->dismissAlert(); });
        QTest::qWait(300);
    }
    return frames;
}

void reportFrames(const std::string &what, const Frames &frames)
{
    bench::report("longest frame, " + what + ", processor time", "a frame's budget",
        {frames.longest(), frameBudget}, "ms", 1);
    bench::report(
        "frames over 25 ms, " + what, "all frames", frames.lateOnes(), "frames", lateShare);
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    reportFrames("500 rows scrolling", scrolling());
    reportFrames("one of 500 rows unfolding 500 components", unfolding());
    reportFrames("guide and alert coming and going over 500 rows", transitions());
    return EXIT_SUCCESS;
}
