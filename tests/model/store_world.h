#pragma once

#include "model/damaged_lists.h"
#include "model/modelled_bundles.h"
#include "model/modelled_system.h"
#include "model/watched_store.h"

namespace zorvane::tests
{

/** A whole store, run after run, on a made-up system with a user, a filter and a disk. */
class StoreWorld
{
public:
    /** What is there at first is the seed's; the program has just been started. */
    explicit StoreWorld(quint32 seed);
    ~StoreWorld();
    StoreWorld(const StoreWorld &) = delete;
    StoreWorld &operator=(const StoreWorld &) = delete;

    /** The program of now. */
    [[nodiscard]] WatchedStore &run() const { return *m_run; }
    [[nodiscard]] app::AppBlockStore &store() const { return m_run->store(); }
    [[nodiscard]] FakePlatform &system() { return m_fixture.system; }
    [[nodiscard]] ModelledSystem &answers() { return m_answers; }
    [[nodiscard]] ModelledBundles &bundles() { return m_bundles; }
    [[nodiscard]] ObservedProcesses &observed() { return m_observed; }

    void remove(const records::BlockedApplication &application);
    /** Something damages the stored list between two runs. Returns what is wrong. */
    enum class Between { Nothing, Damage };
    [[nodiscard]] QString startAgain(Between between = Between::Nothing);
    [[nodiscard]] QString killAndStartAgain(Between between);

    /** To be called after each step. @p mayFail: its write, or the last before it, may. */
    void stepEnded(bool mayFail);
    void launchIsAnsweredAgain() { m_launchIsUnanswered = true; }
    /** Lets everything come to rest; returns what is wrong then. */
    [[nodiscard]] QString rested();
    /** The same for the rules, if a write of them is known to have gone well. */
    [[nodiscard]] QString brokenRules();

    [[nodiscard]] Rules storedRules() const;
    [[nodiscard]] Counts happened() const;

private:
    void start(Between between);
    void listChanged(const QString &event);
    void pushed();
    [[nodiscard]] qsizetype writtenWishes() const;

    /** What a write that was begun and is not known to fail has to leave stored, as long as the
     * wish is not written again. */
    struct Push {
        Rules rules;
        qsizetype wishes = 0;
    };

    StoreFixture m_fixture;
    ModelledSystem m_answers;
    ModelledBundles m_bundles;
    ObservedProcesses m_observed;
    DamagedLists m_damaged;
    Counts m_happened;
    std::unique_ptr<WatchedStore> m_run;
    std::optional<Push> m_newest;
    bool m_launchIsUnanswered = false;
};

} // namespace zorvane::tests
