#pragma once

#include "app/records/blocked_application.h"
#include "platform/state_folder.h"

#include <optional>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace zorvane::tests
{

/**
 * A state folder in which a start of the program has much to write: a record of its own to drop, a
 * wish for protection to derive, a configuration to store, and, five seconds later, an identity to
 * take in. What the programs do to it has to lead from each list to the next.
 */
class BusyFolder
{
public:
    BusyFolder();

    /** What an earlier version stored; the first record is the program's own. */
    void storeOldList();
    /** What a start makes of it. */
    void storeCurrentList();
    /** The filter saw a helper of the first application, just now. */
    void observeHelper() const;
    /** There is a newer version, checked for just now. */
    void announceVersion(const QString &version);
    /** Programs were killed while they wrote, what they had in mind being anything. */
    void leaveHalfWritten();

    /** Where the stored list stands on its way: the old one, the current one, the one that took in
     * what was observed; -1 if it is none of these. */
    [[nodiscard]] int stage() const;
    /** The version that the agent has announced, as it remembers it; empty if none. */
    [[nodiscard]] QString announcedVersion() const;
    /** The preferences as they are, to be understood later, when there is time. */
    [[nodiscard]] QByteArray snapshot() const;
    /** What was done and is undone in a later one of these snapshots; empty if nothing is. */
    [[nodiscard]] QString undone(const QList<QByteArray> &snapshots) const;
    /** What else is wrong in the folder; empty if nothing is. */
    [[nodiscard]] QString damage() const;
    /** True if a write of the preferences was begun since they were last set here, and not
     * finished. */
    [[nodiscard]] bool wasInterrupted() const;
    /** True while something half-written lies about. */
    [[nodiscard]] bool hasHalfWritten() const;

    [[nodiscard]] QVariantMap preferences() const;
    void setPreferences(const QVariantMap &values);
    [[nodiscard]] QString path() const { return m_folder.filePath(QString()); }
    [[nodiscard]] const StateFolder &state() const { return m_folder; }

private:
    [[nodiscard]] int stageOf(const QVariantMap &preferences) const;
    void store(const QList<records::BlockedApplication> &list);

    StateFolder m_folder;
    /** Of the half-written preferences, if there are any, before the programs start. */
    std::optional<platform::simulated::FileStamp> m_leftOver;
    QList<QList<records::BlockedApplication>> m_stages;
};

/** The names of the lists that programs started with this data folder took for damaged. */
[[nodiscard]] QString setAsideBy(const QString &data);

/** Starts from a test talk to nobody outside, show nothing, and keep everything in @p data. */
void shieldStartedPrograms(const QString &data, const QString &busAddress);

} // namespace zorvane::tests
