#include "platform/simulated/posix_directory_walk.h"

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace zorvane::platform::simulated
{

namespace
{

struct Closer {
    void operator()(DIR *folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, Closer>;

constexpr int openFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;

/** How much of a path is handed to the system at once, below its limit for one call. */
constexpr size_t stretchLength = 2000;

Folder openAt(int base, const char *path, int flags)
{
    const int descriptor = ::openat(base, path, openFlags | flags);
    if (descriptor < 0)
        return nullptr;
    Folder folder(::fdopendir(descriptor));
    if (!folder)
        ::close(descriptor);
    return folder;
}

ItemKind kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return ItemKind::Directory;
    return S_ISREG(mode) ? ItemKind::RegularFile : ItemKind::Other;
}

ItemKind kindOf(int folder, const dirent &entry)
{
    switch (entry.d_type) {
    case DT_DIR:
        return ItemKind::Directory;
    case DT_REG:
        return ItemKind::RegularFile;
    case DT_UNKNOWN: {
        struct stat status {
        };
        if (::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
            return kindOf(status.st_mode);
        return ItemKind::Other;
    }
    default:
        return ItemKind::Other;
    }
}

/** One walk. The folders still to be entered are kept on a stack, so that the path of the last one
 * is always that of the current folder, or of one above it, and a name. */
class Walk
{
public:
    Walk(const std::filesystem::path &root, const DirectoryWalk::Visitor &visit)
        : m_path(root.native())
        , m_rootLength(m_path.size())
        , m_visit(visit)
    {
    }

    void run()
    {
        m_root = openAt(AT_FDCWD, m_path.c_str(), 0);
        struct stat status {
        };
        if (!m_root || ::fstat(::dirfd(m_root.get()), &status) != 0)
            return;
        m_device = status.st_dev;
        list(m_root.get());
        while (!m_pending.empty()) {
            const Pending next = std::move(m_pending.back());
            m_pending.pop_back();
            enter(next);
        }
    }

private:
    /** A folder to be entered: its name, and how long its parent's path is. */
    struct Pending {
        size_t parentLength;
        std::string name;
    };

    void enter(const Pending &next)
    {
        const bool isInCurrent = m_current && next.parentLength == m_currentLength;
        m_path.resize(next.parentLength);
        appendName(next.name);
        Folder folder = isInCurrent
            ? openAt(::dirfd(m_current.get()), next.name.c_str(), O_NOFOLLOW)
            : openFromRoot();
        struct stat status {
        };
        if (!folder || ::fstat(::dirfd(folder.get()), &status) != 0 || status.st_dev != m_device)
            return;
        list(folder.get());
        m_current = std::move(folder);
        m_currentLength = m_path.size();
    }

    /** Opens the folder at the current path, a stretch at a time where the path is long. */
    Folder openFromRoot() const
    {
        Folder reached;
        size_t start = m_rootLength + 1;
        for (;;) {
            size_t end = m_path.size();
            if (end - start > stretchLength)
                end = m_path.rfind('/', start + stretchLength);
            const int base = ::dirfd(reached ? reached.get() : m_root.get());
            reached = openAt(base, m_path.substr(start, end - start).c_str(), O_NOFOLLOW);
            if (!reached || end == m_path.size())
                return reached;
            start = end + 1;
        }
    }

    void list(DIR *folder)
    {
        const size_t length = m_path.size();
        while (const dirent *entry = ::readdir(folder)) {
            if (entry->d_name[0] == '.')
                continue;
            const ItemKind kind = kindOf(::dirfd(folder), *entry);
            appendName(entry->d_name);
            m_visit(m_path, kind);
            m_path.resize(length);
            if (kind == ItemKind::Directory)
                m_pending.push_back({length, entry->d_name});
        }
    }

    void appendName(std::string_view name)
    {
        m_path += '/';
        m_path += name;
    }

    std::string m_path;
    size_t m_rootLength;
    const DirectoryWalk::Visitor &m_visit;
    std::vector<Pending> m_pending;
    Folder m_root;
    Folder m_current;
    size_t m_currentLength = 0;
    dev_t m_device = 0;
};

} // namespace

void PosixDirectoryWalk::walk(const std::filesystem::path &root, const Visitor &visit) const
{
    Walk(root, visit).run();
}

} // namespace zorvane::platform::simulated
