#include "fuzz/target.h"
#include "platform/simulated/embedded_signature.h"
#include "platform/simulated/mach_o.h"

using namespace zorvane::platform;
using namespace zorvane::platform::simulated;
using zorvane::fuzz::require;

namespace
{

/** The signing information, where there is any. */
SigningInformation informationOf(const std::optional<Reading<SigningInformation>> &reading)
{
    const auto *information = reading ? std::get_if<SigningInformation>(&*reading) : nullptr;
    return information != nullptr ? *information : SigningInformation();
}

SigningInformation readFile(ByteSource &source)
{
    const ByteRange bytes(source);
    static_cast<void>(isMachO(bytes));
    return informationOf(readEmbeddedSignature(bytes));
}

} // namespace

/** Reads the input as a program, as a signature and as a code directory. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    MemorySource memory({data, size});
    WindowSource window(memory);
    // Both ways to read have to find the same.
    require(readFile(memory) == readFile(window));

    const ByteRange bytes(memory);
    if (auto signature = EmbeddedSignature::read(bytes))
        static_cast<void>(readSignature(*signature));
    static_cast<void>(readCodeDirectory(bytes));
    return 0;
}
