#pragma once

#include "platform/code_signatures.h"

namespace zorvane::platform::simulated
{

/**
 * Reads signatures from the code itself, as macOS lays them down, on any system: in Mach-O files,
 * beside them in bundles, and in extended attributes. Disk images count as plain files. A few small
 * reads for each piece of code, whatever its size.
 */
class SimulatedCodeSignatures final : public CodeSignatures
{
public:
    [[nodiscard]] std::optional<SigningInformation> signingInformation(
        const std::filesystem::path &path) const override;
};

} // namespace zorvane::platform::simulated
