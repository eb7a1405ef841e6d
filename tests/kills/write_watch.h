#pragma once

#include <array>
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
        Begun = IN_CREATE | IN_MODIFY, ///< a file was made, or what is left of one is overwritten
        Done = IN_MOVED_TO, ///< a file was put in its place
    };

    WriteWatch(const QString &folder, Event event)
        : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
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
        std::array<char, 4096> forgotten{};
        while (::read(m_descriptor, forgotten.data(), forgotten.size()) > 0) { }
    }

    /** Waits until it has happened since the last call, or until the end; true if it has. */
    [[nodiscard]] bool wait(QDeadlineTimer end) const
    {
        pollfd asked{m_descriptor, POLLIN, 0};
        const bool happened = ::poll(&asked, 1, int(end.remainingTime())) > 0;
        forget();
        return happened;
    }

private:
    const int m_descriptor;
};

} // namespace zorvane::tests
