#include "platform/simulated/linux_directory_walk.h"

#include <algorithm>
#include <condition_variable>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <span>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace zorvane::platform::simulated
{

namespace
{

constexpr int openFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;

/** Room for the entries of most folders at once. */
constexpr size_t bufferSize = size_t{64} * 1024;

/** An open folder, or none. */
class Folder
{
public:
    explicit Folder(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;
    ~Folder()
    {
        if (isOpen())
            ::close(m_descriptor);
    }

    [[nodiscard]] static Folder openAt(int base, const char *path, int flags)
    {
        return Folder(::openat(base, path, openFlags | flags));
    }

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

ItemKind kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return ItemKind::Directory;
    return S_ISREG(mode) ? ItemKind::RegularFile : ItemKind::Other;
}

ItemKind kindOf(int folder, const dirent64 &entry)
{
    switch (entry.d_type) {
    case DT_DIR:
        return ItemKind::Directory;
    case DT_REG:
        return ItemKind::RegularFile;
    case DT_UNKNOWN: {
        struct stat status = {};
        if (::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
            return kindOf(status.st_mode);
        return ItemKind::Other;
    }
    default:
        return ItemKind::Other;
    }
}

struct Entry {
    std::string name;
    ItemKind kind;
};

/** The entries of @p folder that are not hidden. Straight from the system: the standard library
 * takes twice as many calls a folder. */
std::vector<Entry> entriesOf(const Folder &folder, std::span<char> buffer)
{
    std::vector<Entry> entries;
    for (;;) {
        const ssize_t size = ::getdents64(folder.descriptor(), buffer.data(), buffer.size());
        if (size <= 0)
            return entries;
        for (ssize_t offset = 0; offset < size;) {
            const auto *entry = reinterpret_cast<const dirent64 *>(buffer.data() + offset);
            offset += entry->d_reclen;
            if (entry->d_name[0] != '.')
                entries.push_back({entry->d_name, kindOf(folder.descriptor(), *entry)});
        }
    }
}

/**
 * One walk by a few threads. Each takes the next folder, reads it, and then visits what it found
 * while the others wait, so that the visitor is called by one thread at a time.
 */
class Walk
{
public:
    Walk(const std::filesystem::path &root, const DirectoryWalk::Visitor &visit)
        : m_rootPath(root.native())
        , m_visit(visit)
        , m_root(Folder::openAt(AT_FDCWD, m_rootPath.c_str(), 0))
    {
    }

    void run()
    {
        if (!m_root.isOpen())
            return;
        m_folders.push_back({0, {}});
        m_pending.push_back(0);
        std::vector<std::jthread> helpers;
        try {
            while (helpers.size() + 1 < threadCount())
                helpers.emplace_back([this] { work(); });
        } catch (const std::system_error &) {
            // The threads that there are do all of it.
        }
        work();
    }

private:
    /** A folder below the root, named by its parent's place in m_folders and its own name. */
    struct FolderName {
        size_t parent;
        std::string name;
    };

    static size_t threadCount() { return std::clamp(std::thread::hardware_concurrency(), 1U, 4U); }

    void work()
    {
        std::vector<char> buffer(bufferSize);
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return !m_pending.empty() || m_reading == 0; });
            if (m_pending.empty())
                return;
            const size_t number = m_pending.back();
            m_pending.pop_back();
            ++m_reading;
            const std::string path = pathOf(number);
            lock.unlock();
            const std::vector<Entry> entries = read(path, buffer);
            lock.lock();
            visit(number, m_rootPath + path, entries);
            --m_reading;
            m_changed.notify_all();
        }
    }

    /** The path from the root on, with a slash in front; empty for the root. */
    [[nodiscard]] std::string pathOf(size_t number) const
    {
        std::vector<size_t> line;
        for (; number != 0; number = m_folders[number].parent)
            line.push_back(number);
        std::ranges::reverse(line);
        std::string path;
        for (const size_t step : line)
            path.append("/").append(m_folders[step].name);
        return path;
    }

    [[nodiscard]] std::vector<Entry> read(const std::string &path, std::span<char> buffer) const
    {
        if (path.empty())
            return entriesOf(m_root, buffer);
        const Folder folder = Folder::openAt(m_root.descriptor(), path.c_str() + 1, O_NOFOLLOW);
        return folder.isOpen() ? entriesOf(folder, buffer) : std::vector<Entry>();
    }

    void visit(size_t number, std::string path, const std::vector<Entry> &entries)
    {
        const size_t length = path.size();
        for (const Entry &entry : entries) {
            path.append("/").append(entry.name);
            m_visit(path, entry.kind);
            path.resize(length);
            if (entry.kind == ItemKind::Directory) {
                m_pending.push_back(m_folders.size());
                m_folders.push_back({number, entry.name});
            }
        }
    }

    const std::string m_rootPath;
    const DirectoryWalk::Visitor &m_visit;
    const Folder m_root;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    // All below are guarded by the mutex.
    std::vector<FolderName> m_folders;
    std::vector<size_t> m_pending;
    int m_reading = 0;
};

} // namespace

void LinuxDirectoryWalk::walk(const std::filesystem::path &root, const Visitor &visit) const
{
    Walk(root, visit).run();
}

} // namespace zorvane::platform::simulated
