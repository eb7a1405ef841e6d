#include "platform/simulated/old_style_property_list.h"
#include "platform/simulated/property_list.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace zorvane::platform::simulated;

namespace
{

/** Ends the program if a dictionary that was read cannot be written and read again. */
void requireRoundTrip(const QVariant &read)
{
    if (read.typeId() != QMetaType::QVariantMap)
        return;
    if (readPropertyList(writePropertyList(read.toMap())).typeId() != QMetaType::QVariantMap)
        std::abort();
}

} // namespace

/** Feeds property lists of every form to the reader. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    requireRoundTrip(readPropertyList(bytes));
    requireRoundTrip(readOldStylePropertyList(QString::fromUtf8(bytes)));
    return 0;
}
