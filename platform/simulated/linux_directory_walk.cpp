#include "platform/simulated/linux_directory_walk.h"

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace zorvane::platform::simulated
{

namespace
{

constexpr int openFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;

/** How much of a path is handed to the system at once, below its limit for one call. */
constexpr size_t stretchLength = 2000;

/** Room for the entries of most folders at once. */
constexpr size_t bufferSize = 64 * 1024;

/** An open folder, or none. */
class Folder
{
public:
    Folder() = default;
    explicit Folder(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    Folder(Folder &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    Folder &operator=(Folder &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
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
    /** The device that the folder lies on; nothing if the folder is not open. */
    [[nodiscard]] std::optional<dev_t> device() const
    {
        struct stat status = {};
        if (::fstat(m_descriptor, &status) != 0)
            return std::nullopt;
        return status.st_dev;
    }

private:
    int m_descriptor = -1;
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
        m_root = Folder::openAt(AT_FDCWD, m_path.c_str(), 0);
        m_device = m_root.device();
        if (!m_device)
            return;
        list(m_root);
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
        const bool isInCurrent = m_current.isOpen() && next.parentLength == m_currentLength;
        m_path.resize(next.parentLength);
        appendName(next.name);
        Folder folder = isInCurrent
            ? Folder::openAt(m_current.descriptor(), next.name.c_str(), O_NOFOLLOW)
            : openFromRoot();
        if (!folder.isOpen() || folder.device() != m_device)
            return;
        list(folder);
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
            const int base = (reached.isOpen() ? reached : m_root).descriptor();
            reached = Folder::openAt(base, m_path.substr(start, end - start).c_str(), O_NOFOLLOW);
            if (!reached.isOpen() || end == m_path.size())
                return reached;
            start = end + 1;
        }
    }

    /** Straight from the system: the standard library takes twice as many calls a folder. */
    void list(const Folder &folder)
    {
        for (;;) {
            const ssize_t size = ::getdents64(folder.descriptor(), m_buffer.get(), bufferSize);
            if (size <= 0)
                return;
            for (ssize_t offset = 0; offset < size;) {
                const auto *entry = reinterpret_cast<const dirent64 *>(m_buffer.get() + offset);
                offset += entry->d_reclen;
                if (entry->d_name[0] != '.')
                    visit(entry->d_name, kindOf(folder.descriptor(), *entry));
            }
        }
    }

    void visit(const char *name, ItemKind kind)
    {
        const size_t length = m_path.size();
        appendName(name);
        m_visit(m_path, kind);
        m_path.resize(length);
        if (kind == ItemKind::Directory)
            m_pending.push_back({length, name});
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
    std::optional<dev_t> m_device;
    // The system lays entries down at multiples of eight.
    std::unique_ptr<char[]> m_buffer = std::make_unique_for_overwrite<char[]>(bufferSize);
};

} // namespace

void LinuxDirectoryWalk::walk(const std::filesystem::path &root, const Visitor &visit) const
{
    Walk(root, visit).run();
}

} // namespace zorvane::platform::simulated
