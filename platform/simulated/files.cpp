#include "platform/simulated/files.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <QFile>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zorvane::platform::simulated
{

namespace
{

using namespace Qt::StringLiterals;

constexpr off_t largestFile = off_t(256) << 20;

QString lastError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/** An open file, closed at the end. */
class Descriptor
{
public:
    Descriptor(const std::filesystem::path &path, int flags)
        : m_descriptor(::open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR))
    {
    }
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

FileStamp stampFrom(const struct stat &status)
{
#ifdef __APPLE__
    const timespec &modified = status.st_mtimespec;
#else
    const timespec &modified = status.st_mtim;
#endif
    return {status.st_dev, status.st_ino, status.st_size, modified.tv_sec, modified.tv_nsec};
}

bool readAll(int descriptor, QByteArray &bytes)
{
    qsizetype filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count
            = ::read(descriptor, bytes.data() + filled, static_cast<size_t>(bytes.size() - filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        if (count == 0)
            break;
        filled += count;
    }
    bytes.truncate(filled);
    return true;
}

bool writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        bytes = bytes.sliced(count);
    }
    return true;
}

std::filesystem::path hiddenSibling(const std::filesystem::path &path, const char *suffix)
{
    return path.parent_path() / ("." + path.filename().string() + suffix);
}

} // namespace

QString textOf(const std::filesystem::path &path)
{
    return QFile::decodeName(path.c_str());
}

std::optional<FileStamp> stampOf(const std::filesystem::path &path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return stampFrom(status);
}

FileContents readFile(const std::filesystem::path &path)
{
    // Without O_NONBLOCK a named pipe in the file's place would hold the program up for ever.
    const Descriptor file(path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) {
        if (errno == ENOENT)
            return {};
        return {FileContents::Kind::Unreadable, {}, {}, lastError()};
    }
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0)
        return {FileContents::Kind::Unreadable, {}, {}, lastError()};
    if (!S_ISREG(status.st_mode))
        return {FileContents::Kind::Unreadable, {}, {}, u"it is not a regular file"_s};
    if (status.st_size > largestFile)
        return {FileContents::Kind::Unreadable, {}, {}, u"it is too large"_s};
    QByteArray bytes(static_cast<qsizetype>(status.st_size), Qt::Uninitialized);
    if (!readAll(file.get(), bytes))
        return {FileContents::Kind::Unreadable, {}, {}, lastError()};
    return {FileContents::Kind::Read, std::move(bytes), stampFrom(status), {}};
}

std::optional<QString> replaceFile(const std::filesystem::path &path, const QByteArray &bytes)
{
    // One fixed name: what a killed program left behind is overwritten instead of piling up.
    const std::filesystem::path fresh = hiddenSibling(path, ".new");
    {
        const Descriptor file(fresh, O_WRONLY | O_CREAT | O_TRUNC);
        if (!file.isOpen() || !writeAll(file.get(), bytes) || ::fsync(file.get()) != 0)
            return lastError();
    }
    if (::rename(fresh.c_str(), path.c_str()) != 0)
        return lastError();
    const Descriptor folder(path.parent_path(), O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen() || ::fsync(folder.get()) != 0)
        return lastError();
    return std::nullopt;
}

std::optional<std::filesystem::path> keepAside(const std::filesystem::path &path)
{
    constexpr int mostNames = 1000;
    for (int number = 1; number <= mostNames; ++number) {
        std::filesystem::path aside = path;
        aside += ".damaged-" + std::to_string(number);
        if (::link(path.c_str(), aside.c_str()) == 0)
            return aside;
        if (errno != EEXIST)
            return std::nullopt;
    }
    return std::nullopt;
}

std::optional<QString> makeFolder(const std::filesystem::path &path)
{
    const std::filesystem::path parent = path.parent_path();
    std::error_code ignored;
    if (!parent.empty() && parent != path && !std::filesystem::exists(parent, ignored)) {
        if (auto error = makeFolder(parent))
            return error;
    }
    if (::mkdir(path.c_str(), S_IRWXU) == 0)
        return std::nullopt;
    if (errno != EEXIST)
        return lastError();
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return lastError();
    if (!S_ISDIR(status.st_mode))
        return u"something that is not a folder stands there"_s;
    return std::nullopt;
}

std::filesystem::path lockPathOf(const std::filesystem::path &path)
{
    return hiddenSibling(path, ".lock");
}

FileLock::~FileLock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

FileLock::FileLock(FileLock &&other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_error(std::move(other.m_error))
{
}

FileLock &FileLock::operator=(FileLock &&other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_error, other.m_error);
    return *this;
}

FileLock FileLock::wait(const std::filesystem::path &path)
{
    return open(path, LOCK_EX);
}

FileLock FileLock::attempt(const std::filesystem::path &path)
{
    return open(path, LOCK_EX | LOCK_NB);
}

FileLock FileLock::open(const std::filesystem::path &path, int operation)
{
    FileLock lock;
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        lock.m_error = lastError();
        return lock;
    }
    int result = 0;
    do {
        result = ::flock(descriptor, operation);
    } while (result != 0 && errno == EINTR);
    if (result == 0) {
        lock.m_descriptor = descriptor;
        return lock;
    }
    if (errno != EWOULDBLOCK)
        lock.m_error = lastError();
    ::close(descriptor);
    return lock;
}

} // namespace zorvane::platform::simulated
