#include "platform/simulated/small_file.h"

#include <fcntl.h>
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

namespace zorvane::platform::simulated
{

std::optional<QByteArray> readSmallFile(const std::filesystem::path &path, qint64 limit)
{
    // O_NONBLOCK: a pipe under the name of a file would hold the open until somebody writes to it.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    struct stat status {
    };
    QFile file;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > limit
        || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::nullopt;
    }
    QByteArray bytes = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > limit)
        return std::nullopt;
    return bytes;
}

} // namespace zorvane::platform::simulated
