// A program that wants to be the only one of its state folder, for tests.

#include "platform/single_instance.h"

#include <cstdio>
#include <QCoreApplication>

using zorvane::platform::SingleInstance;

namespace
{

void say(const char *line)
{
    std::puts(line);
    std::fflush(stdout);
}

} // namespace

/** Says "first" and stays until it is killed, saying "forward" and the token at each other start;
 * or ends with the status that a program's main would end with. */
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const auto instance = zorvane::platform::makeSingleInstance();
    switch (instance->acquire()) {
    case SingleInstance::Outcome::AnotherRuns:
        return 0;
    case SingleInstance::Outcome::Unusable:
        return 1;
    case SingleInstance::Outcome::First:
        break;
    }
    instance->onBringForward(
        [] { say(("forward " + qgetenv("XDG_ACTIVATION_TOKEN")).constData()); });
    say("first");
    return QCoreApplication::exec();
}
