// How long the window takes for one frame while a long list scrolls, and while a row unfolds many
// components.

#include "app/records/blocked_application_json.h"
#include "bench/report.h"
#include "tests/ui/window_fixture.h"

#include <cstdlib>
#include <ctime>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;

namespace
{

constexpr int rounds = 5;
constexpr int applicationCount = 500;
constexpr int helperCount = 499;
constexpr double frameBudget = 1000.0 / 60;

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

/** The longest frame of a sequence; of each frame the median of the rounds. */
class Frames
{
public:
    void add(size_t number, double milliseconds)
    {
        if (m_frames.size() <= number)
            m_frames.resize(number + 1);
        m_frames[number].push_back(milliseconds);
    }

    [[nodiscard]] double longest() const
    {
        double result = 0;
        for (const auto &frame : m_frames)
            result = std::max(result, bench::median(frame));
        return result;
    }

private:
    std::vector<std::vector<double>> m_frames;
};

double scrolling()
{
    QList<tests::SampleApplication> applications;
    for (int i = 0; i < applicationCount; ++i)
        applications.append({u"Application %1"_s.arg(i), u"com.example.application%1"_s.arg(i),
            u"ABCDE12345"_s, std::nullopt});
    const tests::WindowFixture fixture(applications);
    QQuickItem *const page = fixture.item(u"page"_s);
    Frames frames;
    for (int round = 0; round < rounds; ++round) {
        // As fast as a wheel is turned.
        for (int position = 0; position < 100; ++position)
            frames.add(static_cast<size_t>(position),
                frame(fixture, [&] { page->setProperty("contentY", position * 120); }));
    }
    return frames.longest();
}

records::BlockedApplication largeApplication()
{
    records::BlockedApplication record;
    record.id = QUuid::createUuid();
    record.name = u"Large"_s;
    record.bundleIdentifier = record.signingIdentifier = u"com.example.large"_s;
    record.path = u"/Applications/Large.app"_s;
    record.inspectionVersion = records::currentInspectionVersion;
    QList<records::CodeIdentity> helpers;
    for (int i = 0; i < helperCount; ++i)
        helpers.append({u"com.example.large.helper%1"_s.arg(i), u"ABCDE12345"_s});
    record.auxiliaryCodeIdentities = helpers;
    return record;
}

double unfolding()
{
    tests::WindowFixture fixture;
    fixture.store->add(largeApplication());
    fixture.settle();
    QQuickItem *const disclosure = fixture.item(u"disclosure"_s);
    Frames frames;
    for (int round = 0; round < rounds; ++round) {
        frames.add(0, frame(fixture, [&] { fixture.click(disclosure); }));
        for (size_t step = 1; step < 20; ++step)
            frames.add(step, frame(fixture, [] { QTest::qSleep(10); }));
        fixture.click(disclosure);
        QTest::qWait(500);
    }
    return frames.longest();
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    bench::report("longest frame, 500 rows scrolling, processor time", "a frame's budget",
        {scrolling(), frameBudget}, "ms", 1);
    bench::report("longest frame, a row unfolding 500 components, processor time",
        "a frame's budget", {unfolding(), frameBudget}, "ms", 1);
    return EXIT_SUCCESS;
}
