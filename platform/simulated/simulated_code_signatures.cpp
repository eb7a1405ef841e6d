#include "platform/simulated/simulated_code_signatures.h"

#include "platform/binary_file.h"
#include "platform/simulated/detached_signature.h"
#include "platform/simulated/embedded_signature.h"
#include "platform/simulated/mach_o.h"
#include "platform/simulated/static_code.h"

namespace zorvane::platform::simulated
{

namespace
{

/** The signature that a file itself carries; nothing if the file cannot be read as code. */
std::optional<Reading<SigningInformation>> readOwnSignature(const std::filesystem::path &path)
{
    const auto file = BinaryFile::open(path, BinaryFile::Links::Follow);
    if (!file)
        return std::nullopt;
    WindowSource window(*file);
    const ByteRange bytes(window);
    return isMachO(bytes) ? readEmbeddedSignature(bytes) : readSignatureAttributes(*file);
}

/** Nothing found and a damaged signature both make unsigned code. */
SigningInformation informationOf(const Reading<SigningInformation> &reading)
{
    const auto *information = std::get_if<SigningInformation>(&reading);
    return information != nullptr ? *information : SigningInformation();
}

} // namespace

std::optional<SigningInformation> SimulatedCodeSignatures::signingInformation(
    const std::filesystem::path &path) const
{
    std::error_code error;
    const bool isFolder = std::filesystem::is_directory(path, error);
    auto bundle = isFolder ? bundleCode(path) : std::nullopt;
    if (isFolder && !bundle)
        return std::nullopt;

    const auto own = readOwnSignature(isFolder ? bundle->file : path);
    if (!own)
        return std::nullopt;
    if (!std::holds_alternative<Absent>(*own))
        return informationOf(*own);
    // Only now, because it costs far more than a look into the file.
    if (!isFolder)
        bundle = bundleOfMainExecutable(path);
    return bundle ? informationOf(readSignatureFiles(bundle->signatureFolder))
                  : SigningInformation();
}

} // namespace zorvane::platform::simulated
