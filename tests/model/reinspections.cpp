#include "model/reinspections.h"

#include <algorithm>

namespace zorvane::tests
{

using records::BlockedApplication;

namespace
{

/** What @p result has to make of @p old; that may be what it was. */
bool canBecome(const BlockedApplication &old, const BlockedApplication &record,
    const Inspected &result, const Applications &after)
{
    if (!result.record)
        return record == old;
    BlockedApplication renewed = *result.record;
    renewed.id = old.id;
    if (record == renewed)
        return true;
    // A bundle that has become another listed application keeps its old record.
    return record == old && renewed.signingIdentifier != old.signingIdentifier
        && std::ranges::find(
               after, renewed.signingIdentifier, &BlockedApplication::signingIdentifier)
        != after.cend();
}

} // namespace

void Reinspections::begin(const Applications &list)
{
    Run run;
    for (const BlockedApplication &application : list) {
        if (isOutOfDate(application))
            run.records.insert(application.id, {application.path, {}});
    }
    if (!run.records.isEmpty())
        m_runs.append(run);
}

void Reinspections::inspected(const QString &path, const Inspected &result)
{
    for (Run &run : m_runs) {
        for (Stale &stale : run.records) {
            if (stale.path == path && !stale.results.contains(result))
                stale.results.append(result);
        }
    }
}

bool Reinspections::canMake(const Run &run, const Applications &before, const Applications &after)
{
    const bool isInspected = std::ranges::none_of(
        run.records, [](const Stale &stale) { return stale.results.isEmpty(); });
    if (!isInspected || before.size() != after.size())
        return false;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const BlockedApplication &old = before.at(i);
        const auto stale = run.records.constFind(old.id);
        const bool fits = stale == run.records.cend()
            ? after.at(i) == old
            : std::ranges::any_of(stale->results, [&](const Inspected &result) {
                  return canBecome(old, after.at(i), result, after);
              });
        if (!fits)
            return false;
    }
    return true;
}

bool Reinspections::canMake(const Applications &before, const Applications &after) const
{
    return std::ranges::any_of(m_runs, [&](const Run &run) { return canMake(run, before, after); });
}

void Reinspections::made(const Applications &before, const Applications &after, bool isSure)
{
    const auto fits = [&](const Run &run) { return canMake(run, before, after); };
    auto run = std::ranges::find_if(
        m_runs, [&](const Run &each) { return !each.mayHaveEnded && fits(each); });
    if (run == m_runs.end())
        run = std::ranges::find_if(m_runs, fits);
    if (run == m_runs.end())
        return;
    // It may have been any of those that fit: what this one saw, another may still bring.
    for (Run &other : m_runs) {
        if (&other != &*run && fits(other))
            inherit(other, *run);
    }
    if (isSure)
        m_runs.erase(run);
    else
        run->mayHaveEnded = true;
}

void Reinspections::inherit(Run &heir, const Run &run)
{
    for (auto stale = heir.records.begin(); stale != heir.records.end(); ++stale) {
        for (const Inspected &result : run.records.value(stale.key()).results) {
            if (!stale->results.contains(result))
                stale->results.append(result);
        }
    }
}

bool Reinspections::areUnderWay() const
{
    return !std::ranges::all_of(m_runs, &Run::mayHaveEnded);
}

} // namespace zorvane::tests
