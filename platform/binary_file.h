#pragma once

#include "platform/byte_source.h"

#include <filesystem>
#include <memory>

namespace zorvane::platform
{

/** A regular file, open for reading until the object dies. For one thread at a time. */
class BinaryFile final : public ByteSource
{
public:
    /** What to do with a path whose last component is a symbolic link. */
    enum class Links { Follow, Refuse };

    /**
     * Opens the file at @p path. Nothing if it cannot be opened or is no regular file; a pipe or a
     * device under that name is never waited for.
     */
    [[nodiscard]] static std::unique_ptr<BinaryFile> open(
        const std::filesystem::path &path, Links links);

    ~BinaryFile() override;
    BinaryFile(const BinaryFile &) = delete;
    BinaryFile &operator=(const BinaryFile &) = delete;

    [[nodiscard]] std::uint64_t size() const override { return m_size; }
    [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) override;

    /** The open file's descriptor, for what this class does not do; the object keeps it. */
    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    BinaryFile(int descriptor, std::uint64_t size);

    int m_descriptor;
    std::uint64_t m_size;
};

} // namespace zorvane::platform
