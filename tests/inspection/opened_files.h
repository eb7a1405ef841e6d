#pragma once

#include <filesystem>
#include <sys/inotify.h>
#include <unistd.h>

namespace zorvane::tests
{

/** Tells whether one of some files was opened by anybody, in whatever way. Needs Linux. */
class OpenedFiles
{
public:
    OpenedFiles()
        : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
    }
    ~OpenedFiles() { ::close(m_descriptor); }
    OpenedFiles(const OpenedFiles &) = delete;
    OpenedFiles &operator=(const OpenedFiles &) = delete;

    /** False if it cannot be watched. */
    [[nodiscard]] bool watch(const std::filesystem::path &file) const
    {
        return ::inotify_add_watch(m_descriptor, file.c_str(), IN_OPEN) >= 0;
    }

    [[nodiscard]] bool any() const
    {
        alignas(inotify_event) char events[4096];
        return ::read(m_descriptor, events, sizeof events) > 0;
    }

private:
    const int m_descriptor;
};

} // namespace zorvane::tests
