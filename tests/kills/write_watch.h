#pragma once

#include <array>
#include <cerrno>
#include <optional>
#include <poll.h>
#include <QByteArray>
#include <QDeadlineTimer>
#include <QFile>
#include <sys/inotify.h>
#include <unistd.h>

namespace zorvane::tests
{

/** Sees when something happens in a folder, at once and without asking again and again. */
class WriteWatch
{
public:
    enum Event : uint32_t {
        Begun = IN_CREATE | IN_MODIFY, ///< a file's new content, which has a name of its own
        Done = IN_MOVED_TO, ///< a file was put in its place
    };

    WriteWatch(const QString &folder, Event event)
        : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
        , m_ending(event == Begun ? ".new" : "")
    {
        if (::inotify_add_watch(m_descriptor, QFile::encodeName(folder).constData(), event) < 0)
            qFatal("%s cannot be watched", qUtf8Printable(folder));
    }
    ~WriteWatch() { ::close(m_descriptor); }
    WriteWatch(const WriteWatch &) = delete;
    WriteWatch &operator=(const WriteWatch &) = delete;

    /** Forgets what happened so far. */
    void forget() const
    {
        while (readSome()) { }
    }

    /** Waits until it has happened since the last call, or until the end; true if it has. */
    [[nodiscard]] bool wait(QDeadlineTimer end) const
    {
        pollfd asked{m_descriptor, POLLIN, 0};
        for (;;) {
            const int ready = ::poll(&asked, 1, int(end.remainingTime()));
            if (ready < 0 && errno == EINTR)
                continue;
            if (ready <= 0)
                return false;
            bool happened = false;
            while (const auto some = readSome())
                happened = happened || *some;
            if (happened)
                return true;
        }
    }

private:
    /** True if it was among what happened; nothing if nothing did. */
    [[nodiscard]] std::optional<bool> readSome() const
    {
        alignas(inotify_event) std::array<char, 4096> bytes{};
        const ssize_t size = ::read(m_descriptor, bytes.data(), bytes.size());
        if (size <= 0)
            return std::nullopt;
        bool happened = false;
        for (ssize_t at = 0; at < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(bytes.data() + at);
            // It has no name if it tells of the watch itself.
            happened = happened || (event->len > 0 && QByteArray(event->name).endsWith(m_ending));
            at += ssize_t(sizeof *event + event->len);
        }
        return happened;
    }

    const int m_descriptor;
    const QByteArray m_ending;
};

} // namespace zorvane::tests
