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
    requireRoundTrip(readPropertyList(bytes));
    requireRoundTrip(readOldStylePropertyList(QString::fromUtf8(bytes)));
    return 0;
}
