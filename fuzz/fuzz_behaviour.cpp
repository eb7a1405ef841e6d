#include "fuzz/target.h"
#include "platform/simulated/behaviour.h"
#include "platform/simulated/report.h"

#include <QLoggingCategory>

using namespace zorvane::platform::simulated;
using zorvane::fuzz::require;

/** Reads the input as "system.json". */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // What is wrong in it is reported, which would be most of the work.
    [[maybe_unused]] static const bool isQuiet = [] {
        QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
        return true;
    }();
    const QByteArrayView text(data, qsizetype(size));
    const Behaviour behaviour = readBehaviour(text, QStringLiteral("system.json"));
    require(behaviour.bundlePath.is_absolute());
    require(behaviour.activationDelay >= std::chrono::milliseconds(0));
    return 0;
}
