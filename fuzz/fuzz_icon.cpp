#include "platform/simulated/icon_family.h"
#include "platform/simulated/png_icon.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace zorvane::platform::simulated;

namespace
{

/** The largest that may come of an icon. */
constexpr int largestSide = 1024;

/** Ends the program if @p image is larger than icons are. */
void requireSmall(const QImage &image)
{
    if (image.width() > largestSide || image.height() > largestSide)
        std::abort();
}

} // namespace

/** Reads the input as an icon family and as a PNG. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    for (const int side : {16, 128, largestSide})
        requireSmall(iconOfFamily(bytes, side));
    requireSmall(drawnPng(bytes, largestSide));
    return 0;
}
