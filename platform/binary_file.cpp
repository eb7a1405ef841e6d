#include "platform/binary_file.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace zorvane::platform
{

std::unique_ptr<BinaryFile> BinaryFile::open(const std::filesystem::path &path, Links links)
{
    // O_NONBLOCK: the open of a pipe would wait until somebody writes to it.
    const int flags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | (links == Links::Refuse ? O_NOFOLLOW : 0);
    const int descriptor = ::open(path.c_str(), flags);
    if (descriptor < 0)
        return nullptr;
    struct stat status {
    };
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return nullptr;
    }
    return std::unique_ptr<BinaryFile>(
        new BinaryFile(descriptor, static_cast<std::uint64_t>(status.st_size)));
}

BinaryFile::BinaryFile(int descriptor, std::uint64_t size)
    : m_descriptor(descriptor)
    , m_size(size)
{
}

BinaryFile::~BinaryFile()
{
    ::close(m_descriptor);
}

std::size_t BinaryFile::read(std::uint64_t offset, std::span<std::uint8_t> into)
{
    std::size_t done = 0;
    while (done < into.size()) {
        if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()) - done)
            break;
        const ssize_t count = ::pread(m_descriptor, into.data() + done, into.size() - done,
            static_cast<off_t>(offset + done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return 0;
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

} // namespace zorvane::platform
