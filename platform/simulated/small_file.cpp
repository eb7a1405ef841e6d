#include "platform/simulated/small_file.h"

#include "platform/binary_file.h"

namespace zorvane::platform::simulated
{

std::optional<QByteArray> readSmallFile(const std::filesystem::path &path, qint64 limit)
{
    const auto file = BinaryFile::open(path, BinaryFile::Links::Follow);
    if (!file || file->size() > std::uint64_t(limit))
        return std::nullopt;
    QByteArray bytes(qsizetype(file->size()), Qt::Uninitialized);
    const std::span into(reinterpret_cast<std::uint8_t *>(bytes.data()), size_t(bytes.size()));
    if (file->read(0, into) != into.size())
        return std::nullopt;
    return bytes;
}

} // namespace zorvane::platform::simulated
