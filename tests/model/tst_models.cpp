#include "long/times.h"
#include "model/filter_model.h"
#include "model/store_model.h"

#include <cstdio>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

/**
 * Random steps against the models, the same ones each time: runs are numbered, and a run's number
 * is its seed, printed before it. $ZORVANE_MODEL_SEED does one run alone; "new" draws new seeds.
 */
class TestModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFilterControllerFollowsItsTableWhateverHappens() { check(filterModel(), 40); }

    void theStoreKeepsItsListAndHandsOverItsRulesWhateverHappens() { check(storeModel(), 40); }

    void aStepThatNobodyKnowsBreaksAModel()
    {
        for (const ModelKind &kind : {filterModel(), storeModel()})
            QCOMPARE(run(kind, 1, {{-1, 0}}).broken, unknownAction);
    }

    void aFailingScriptShrinksToWhatItNeeds()
    {
        const ModelKind kind = threeTimesTwo();
        const QList<Step> steps = script(kind, 7, 200);
        QVERIFY(!run(kind, 7, steps).broken.isEmpty());
        QCOMPARE(text(kind, shrunk(kind, 7, steps)).count(u"two"_s), 3);
        QCOMPARE(shrunk(kind, 7, steps).size(), 3);
    }

private:
    /** Breaks after the third "two", and in another way without it. */
    static ModelKind threeTimesTwo()
    {
        struct Counting final : Model {
            QString perform(const Step &step) override
            {
                twos += step.action == 1 ? 1 : 0;
                return twos == 3 ? u"three"_s : QString();
            }
            QString finish() override { return twos < 3 ? u"too few"_s : QString(); }
            [[nodiscard]] Counts happened() const override { return {}; }
            int twos = 0;
        };
        return {{{0, u"one"_s, 1}, {1, u"two"_s, 1}},
            [](quint32) { return std::make_unique<Counting>(); }};
    }

    static void check(const ModelKind &kind, int quickRuns)
    {
        constexpr int stepsOfARun = 125;
        const QString wish = qEnvironmentVariable("ZORVANE_MODEL_SEED");
        bool isChosen = false;
        const quint32 chosen = wish.toUInt(&isChosen);
        const bool isNew = wish == u"new"_s;
        const quint32 first = isNew ? QRandomGenerator::global()->generate()
            : isChosen              ? chosen
                                    : 1;
        const int runs = isChosen ? 1 : timesIfLong(quickRuns);
        qInfo("%d runs of %d steps, seeds from %u", runs, stepsOfARun, first);
        Counts happened;
        for (const Action &action : kind.actions)
            happened[u"step: "_s + action.name] = 0;
        for (int i = 0; i < runs; ++i) {
            const quint32 seed = first + quint32(i);
            // Before the run, which may end the program.
            std::fprintf(stderr, "seed %u\n", seed);
            const QList<Step> steps = script(kind, seed, stepsOfARun);
            const Outcome outcome = run(kind, seed, steps);
            for (const Step &step : steps)
                ++happened[u"step: "_s + nameOf(kind, step)];
            for (const auto &[event, count] : outcome.happened.asKeyValueRange())
                happened[event] += count;
            if (outcome.broken.isEmpty())
                continue;
            const QList<Step> shortest = shrunk(kind, seed, steps);
            const QString broken = run(kind, seed, shortest).broken;
            QFAIL(qPrintable(u"seed %1: %2, after these %3 steps:\n%4"_s.arg(seed)
                                 .arg(broken)
                                 .arg(shortest.size())
                                 .arg(text(kind, shortest))));
        }
        for (const auto &[event, count] : happened.asKeyValueRange()) {
            qInfo("%s: %d", qPrintable(event), count);
            // New seeds may do without, by chance.
            QVERIFY2(count > 0 || isChosen || isNew, qPrintable(event));
        }
    }
};

QTEST_GUILESS_MAIN(TestModels)
#include "tst_models.moc"
