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

/** Sees when a file is made in a folder, at once and without asking again and again. */
class WriteWatch
{
public:
    explicit WriteWatch(const QString &folder)
        : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (::inotify_add_watch(m_descriptor, QFile::encodeName(folder).constData(), IN_CREATE) < 0)
            qFatal("%s cannot be watched", qUtf8Printable(folder));
    }
    ~WriteWatch() { ::close(m_descriptor); }
    WriteWatch(const WriteWatch &) = delete;
    WriteWatch &operator=(const WriteWatch &) = delete;

    /** Waits until the next file is made, or the end. What was made before the call is forgotten.
     */
    void waitForNext(QDeadlineTimer end) const
    {
        std::array<char, 4096> forgotten{};
        while (::read(m_descriptor, forgotten.data(), forgotten.size()) > 0) { }
        pollfd asked{m_descriptor, POLLIN, 0};
        ::poll(&asked, 1, int(end.remainingTime()));
    }

private:
    const int m_descriptor;
};

} // namespace zorvane::tests
