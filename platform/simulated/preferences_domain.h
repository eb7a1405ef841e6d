#pragma once

#include "platform/executor.h"
#include "platform/simulated/files.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <QVariant>
#include <QVariantMap>

namespace zorvane::platform::simulated
{

/**
 * The values of one preferences file, a property list, shared with other programs. What is set is
 * seen at once and written a moment later by a thread of its own: only the keys that were set, into
 * what the file holds then. Safe to use from any thread; reading may block on the disk.
 */
class PreferencesDomain
{
public:
    explicit PreferencesDomain(std::filesystem::path file);
    /** Waits until everything set so far has been written, or until that has failed once more. */
    ~PreferencesDomain();
    PreferencesDomain(const PreferencesDomain &) = delete;
    PreferencesDomain &operator=(const PreferencesDomain &) = delete;

    /** The value under @p key, of this program or of the file as it is now; invalid if absent. */
    [[nodiscard]] QVariant value(const QString &key) const;
    void set(const QString &key, const QVariant &value);
    /** Waits until the writer has tried to write everything set so far, and reads the file anew.
     * What could not be written is reported, and tried again at the next change. */
    void synchronize();

private:
    /** What the file held when it was last read or written, and when that was. */
    struct Stored {
        QVariantMap values;
        std::optional<FileStamp> stamp;
    };

    /** Also gives a damaged or unreadable file, which is reported, as one without values. */
    [[nodiscard]] Stored read() const;
    void addWriteJob();
    void writeChanges();
    /** The file's new content; nothing if it could not be written, which is reported. Values with
     * which the file would be too large to be read are reported, too, and left out. */
    [[nodiscard]] std::optional<Stored> write(const QVariantMap &changes) const;

    const std::filesystem::path m_file;
    mutable std::mutex m_mutex;
    mutable Stored m_stored;
    /** Set and not yet with the writer. */
    QVariantMap m_changes;
    /** With the writer. */
    QVariantMap m_inFlight;
    /** Made when it is first needed. The last member: its end writes what is left. */
    std::unique_ptr<ThreadQueue> m_writer;
};

} // namespace zorvane::platform::simulated
