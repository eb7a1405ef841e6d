#include "platform/bundle_reading.h"

#include "platform/macos/adapters.h"

namespace zorvane::platform
{

BundleReading makeBundleReading()
{
    using namespace macos;

    BundleReading reading;
    reading.signatures = makeCodeSignatures();
    reading.bundles = makeBundles();
    reading.walk = makeDirectoryWalk();
    reading.icons = makeIcons();
    return reading;
}

} // namespace zorvane::platform
