#pragma once

#include "platform/simulated/code_signature.h"

#include <optional>
#include <vector>

namespace zorvane::platform::simulated
{

/** The parts of a signature that stands in a Mach-O image: a super blob with an index of blobs. */
class EmbeddedSignature final : public SignatureParts
{
public:
    /**
     * Reads the index of the super blob that @p bytes begin with, which may be hostile. Nothing if
     * a blob of it lies outside.
     */
    [[nodiscard]] static std::optional<EmbeddedSignature> read(const ByteRange &bytes);

    [[nodiscard]] Reading<CodeDirectory> codeDirectory(unsigned index) override;
    [[nodiscard]] bool hasCryptographicSignature() override;

private:
    /** An entry of the index; no bytes where it stands for an absent blob. */
    struct Entry {
        std::uint32_t type;
        std::optional<ByteRange> blob;
    };

    explicit EmbeddedSignature(std::vector<Entry> entries);
    [[nodiscard]] std::optional<ByteRange> firstBlob(std::uint32_t type) const;

    std::vector<Entry> m_entries;
};

/**
 * The signing information of the Mach-O file @p file, from its representative image. Nothing if its
 * universal header is damaged.
 */
[[nodiscard]] std::optional<Reading<SigningInformation>> readEmbeddedSignature(
    const ByteRange &file);

} // namespace zorvane::platform::simulated
