#include "platform/simulated/detached_signature.h"

#include <sys/xattr.h>
#include <vector>

namespace zorvane::platform::simulated
{

namespace
{

// Systems keep far less in an attribute; Linux 64 KiB.
constexpr ssize_t attributeSizeLimit = ssize_t(16) * 1024 * 1024;

#ifdef __APPLE__
constexpr const char *attributePrefix = "com.apple.cs.";
#else
constexpr const char *attributePrefix = "user.com.apple.cs.";
#endif

ssize_t getAttribute(int descriptor, const std::string &name, std::uint8_t *bytes, std::size_t size)
{
#ifdef __APPLE__
    return ::fgetxattr(descriptor, name.c_str(), bytes, size, 0, 0);
#else
    return ::fgetxattr(descriptor, name.c_str(), bytes, size);
#endif
}

/** The bytes of one extended attribute. */
class AttributeSource final : public ByteSource
{
public:
    explicit AttributeSource(std::vector<std::uint8_t> bytes)
        : m_bytes(std::move(bytes))
        , m_source(m_bytes)
    {
    }

    [[nodiscard]] std::uint64_t size() const override { return m_source.size(); }
    [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) override
    {
        return m_source.read(offset, into);
    }

private:
    std::vector<std::uint8_t> m_bytes;
    MemorySource m_source;
};

std::unique_ptr<ByteSource> openAttribute(int descriptor, const std::string &name)
{
    const ssize_t size = getAttribute(descriptor, name, nullptr, 0);
    if (size < 0 || size > attributeSizeLimit)
        return nullptr;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    if (size > 0 && getAttribute(descriptor, name, bytes.data(), bytes.size()) != size)
        return nullptr;
    return std::make_unique<AttributeSource>(std::move(bytes));
}

} // namespace

DetachedSignature::DetachedSignature(OpenPart openPart)
    : m_openPart(std::move(openPart))
{
}

Reading<CodeDirectory> DetachedSignature::codeDirectory(unsigned index)
{
    std::string name = "CodeDirectory";
    if (index > 0)
        name += '-' + std::to_string(index);
    const auto source = m_openPart(name);
    if (!source)
        return Absent();
    auto directory = readCodeDirectory(ByteRange(*source));
    if (!directory)
        return Damaged();
    return std::move(*directory);
}

bool DetachedSignature::hasCryptographicSignature()
{
    // Here it stands bare, without the wrapper that it has in a super blob.
    return m_openPart("CodeSignature") != nullptr;
}

Reading<SigningInformation> readSignatureFiles(const std::filesystem::path &folder)
{
    DetachedSignature parts([&](const std::string &name) {
        return BinaryFile::open(folder / name, BinaryFile::Links::Follow);
    });
    return readSignature(parts);
}

Reading<SigningInformation> readSignatureAttributes(const BinaryFile &file)
{
    DetachedSignature parts([&](const std::string &name) {
        return openAttribute(file.descriptor(), attributePrefix + name);
    });
    return readSignature(parts);
}

} // namespace zorvane::platform::simulated
