#include "fuzz/target.h"
#include "platform/simulated/icon_family.h"
#include "platform/simulated/png_icon.h"

using namespace zorvane::platform::simulated;
using zorvane::fuzz::require;

namespace
{

/** The largest that may come of an icon. */
constexpr int largestSide = 1024;

/** Ends the program if @p image is larger than icons are. */
void requireSmall(const QImage &image)
{
    require(image.width() <= largestSide && image.height() <= largestSide);
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
