#include "platform/bundle_reading.h"

#include "platform/simulated/file_bundles.h"
#include "platform/simulated/file_icons.h"
#include "platform/simulated/linux_directory_walk.h"
#include "platform/simulated/simulated_code_signatures.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace zorvane::platform
{

BundleReading makeBundleReading()
{
    using namespace simulated;

    // A damaged colour profile is no news to anybody; the icon is drawn without it.
    QLoggingCategory::setFilterRules(u"qt.gui.icc.warning=false"_s);

    // The system offers a program's texts in the languages that the program has; ours has one.
    BundleReading reading;
    reading.signatures = std::make_unique<SimulatedCodeSignatures>();
    reading.bundles = std::make_unique<FileBundles>(QStringList{u"en"_s});
    reading.walk = std::make_unique<LinuxDirectoryWalk>();
    reading.icons = std::make_unique<FileIcons>();
    return reading;
}

} // namespace zorvane::platform
