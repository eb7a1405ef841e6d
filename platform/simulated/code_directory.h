#pragma once

#include "platform/byte_range.h"

#include <optional>
#include <QByteArray>

namespace zorvane::platform::simulated
{

/** What one code directory of a signature says of its code. */
struct CodeDirectory {
    std::uint8_t hashType = 0;
    QByteArray identifier;
    /** Absent where the directory names none; may be empty. */
    std::optional<QByteArray> teamIdentifier;
};

/**
 * Reads the code directory that @p bytes begin with, which may be hostile: nothing if anything in
 * it lies outside it or does not fit together. Hashes are never looked at, so the cost does not
 * grow with the code. The format is that of the Security framework's CSCommon.h and of
 * <kern/cs_blobs.h>.
 */
[[nodiscard]] std::optional<CodeDirectory> readCodeDirectory(const ByteRange &bytes);

/**
 * How much the platform prefers a directory made with @p hashType, the greater the more; 0 for
 * types that it does not know.
 */
[[nodiscard]] int hashRank(std::uint8_t hashType);

} // namespace zorvane::platform::simulated
