#pragma once

#include "fakes/fake_platform.h"
#include "model/expected_records.h"

#include <optional>
#include <QHash>
#include <QString>

namespace zorvane::tests
{

/** What an inspection has to make of a bundle: a record, its id aside, or a refusal's text. */
struct Inspected {
    std::optional<records::BlockedApplication> record;
    QString refusal;

    friend bool operator==(const Inspected &, const Inspected &) = default;
};

/** The bundles on a modelled user's disk. */
class ModelledBundles
{
public:
    /** A program inside another one's bundle. */
    using Helper = std::optional<records::CodeIdentity>;

    /** @p system outlives this. */
    explicit ModelledBundles(FakePlatform &system)
        : m_system(system)
    {
    }

    /** Puts a bundle in the place that @p number says, under a name that may be another than
     * before, sometimes that of another application, sometimes one that cannot be inspected; or
     * takes it away. */
    void change(int number);
    /** Without a name it is called as its file is. */
    void put(const QString &path, const QString &identifier, const QString &name = {},
        const Helper &helper = std::nullopt);

    /** What an inspection has to make of what stands there now. */
    [[nodiscard]] Inspected inspected(const QString &path) const;

private:
    void takeAway(const QString &path);

    FakePlatform &m_system;
    QHash<QString, Inspected> m_inspected;
};

} // namespace zorvane::tests
