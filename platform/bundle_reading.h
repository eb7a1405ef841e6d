#pragma once

#include "platform/bundles.h"
#include "platform/code_signatures.h"
#include "platform/directory_walk.h"
#include "platform/icons.h"

#include <memory>

namespace zorvane::platform
{

/** The services that read application bundles; they keep no state of the system or the user. */
struct BundleReading {
    std::unique_ptr<CodeSignatures> signatures;
    std::unique_ptr<Bundles> bundles;
    std::unique_ptr<DirectoryWalk> walk;
    std::unique_ptr<Icons> icons;
};

/** Those of the system that this program was built for; enough for a program without a window.
 * Main thread, after the application object. */
[[nodiscard]] BundleReading makeBundleReading();

} // namespace zorvane::platform
