// A second program that uses the preferences of a state folder, for tests.

#include "platform/simulated/preferences.h"
#include "platform/simulated/simulated_system.h"

#include <algorithm>
#include <cstdio>
#include <QCoreApplication>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;

namespace
{

/** Sets its own keys in turn, as often as asked for, each time in a write of its own. False if a
 * value was lost on the way. */
bool writeKeys(zorvane::platform::Preferences &preferences, const QString &prefix, int count)
{
    constexpr int keyCount = 50;
    for (int i = 0; i < count; ++i) {
        preferences.setString(prefix + QString::number(i % keyCount), QString::number(i));
        preferences.synchronize();
        const int oldest = std::max(0, i - keyCount + 1);
        if (preferences.string(prefix + QString::number(oldest % keyCount))
            != QString::number(oldest))
            return false;
    }
    return true;
}

/** Replaces one large value again and again, until the program is killed. */
[[noreturn]] void writeForEver(zorvane::platform::Preferences &preferences)
{
    constexpr qsizetype size = 300'000;
    for (char generation = 'a';; generation = generation == 'z' ? 'a' : char(generation + 1)) {
        preferences.setData(u"list"_s, QByteArray(size, generation));
        preferences.synchronize();
        std::puts("written");
        std::fflush(stdout);
    }
}

} // namespace

/** FOLDER PREFIX COUNT, or FOLDER alone to write until killed. */
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2 && arguments.size() != 4)
        return 2;
    const auto preferences = makeStandardPreferences(SimulatedSystem(arguments[1].toStdString()));
    if (arguments.size() == 2)
        writeForEver(*preferences);
    return writeKeys(*preferences, arguments[2], arguments[3].toInt()) ? 0 : 1;
}
