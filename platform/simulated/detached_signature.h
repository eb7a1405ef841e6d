#pragma once

#include "platform/binary_file.h"
#include "platform/simulated/code_signature.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace zorvane::platform::simulated
{

/**
 * The parts of a signature that are kept one by one under fixed names, such as "CodeDirectory",
 * "CodeDirectory-1" and "CodeSignature".
 */
class DetachedSignature final : public SignatureParts
{
public:
    /** Opens the part of a name; nothing if there is none. */
    using OpenPart = std::function<std::unique_ptr<ByteSource>(const std::string &name)>;

    explicit DetachedSignature(OpenPart openPart);

    [[nodiscard]] Reading<CodeDirectory> codeDirectory(unsigned index) override;
    [[nodiscard]] bool hasCryptographicSignature() override;

private:
    OpenPart m_openPart;
};

/** The signing information of parts that are the files of a folder. */
[[nodiscard]] Reading<SigningInformation> readSignatureFiles(const std::filesystem::path &folder);

/**
 * The signing information of parts that are extended attributes of @p file, as code has them that
 * is no Mach-O file: "com.apple.cs." and the part's name, on Linux behind "user.".
 */
[[nodiscard]] Reading<SigningInformation> readSignatureAttributes(const BinaryFile &file);

} // namespace zorvane::platform::simulated
