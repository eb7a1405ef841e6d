#include "fuzz/target.h"
#include "platform/simulated/old_style_property_list.h"
#include "platform/simulated/property_list.h"

using namespace zorvane::platform::simulated;
using zorvane::fuzz::require;

namespace
{

/** Ends the program if a dictionary that was read cannot be written and read again. */
void requireRoundTrip(const QVariant &read)
{
    if (read.typeId() != QMetaType::QVariantMap)
        return;
    require(readPropertyList(writePropertyList(read.toMap())).typeId() == QMetaType::QVariantMap);
}

} // namespace

/** Feeds property lists of every form to the reader. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    const QVariant read = readPropertyList(bytes);
    const QVariant readAsOldStyle = readOldStylePropertyList(QString::fromUtf8(bytes));
    // To write is no part of reading, and costs the library more.
    constexpr std::size_t longestRoundTrip = 65536;
    if (size > longestRoundTrip)
        return 0;
    requireRoundTrip(read);
    requireRoundTrip(readAsOldStyle);
    return 0;
}
