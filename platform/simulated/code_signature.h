#pragma once

#include "platform/code_signatures.h"
#include "platform/simulated/code_directory.h"
#include "platform/simulated/signature_reading.h"

namespace zorvane::platform::simulated
{

/** The parts of one code signature, wherever they are kept. For one thread at a time. */
class SignatureParts
{
public:
    virtual ~SignatureParts() = default;

    /** The code directory number @p index: 0 is the mandatory one, the others are alternates. */
    [[nodiscard]] virtual Reading<CodeDirectory> codeDirectory(unsigned index) = 0;
    /** True if there is a well-formed part for the cryptographic signature; it may be empty. */
    [[nodiscard]] virtual bool hasCryptographicSignature() = 0;
};

/**
 * What a signature says of its code. Of several code directories the one with the best hash speaks;
 * a team is told only where there is a part for the cryptographic signature, which linkers leave
 * out. Absent if there is no code directory; damaged if any of them is, if two have the same hash
 * type, or if the identifier is no valid UTF-8.
 */
[[nodiscard]] Reading<SigningInformation> readSignature(SignatureParts &parts);

} // namespace zorvane::platform::simulated
