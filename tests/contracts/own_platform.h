#pragma once

#include "platform/platform.h"

#include <QTemporaryDir>

namespace zorvane::tests
{

/** The ports as a program's main has them. Where the system is simulated, its state is in a folder
 * that goes with the object, and all platforms that are made meanwhile share it. */
class OwnPlatform
{
public:
    [[nodiscard]] platform::Platform *operator->() { return &m_platform; }

private:
    /** Names its folder to the ports that are made from now on. */
    class StateFolder
    {
    public:
        StateFolder() { qputenv("ZORVANE_SYSTEM_DIR", m_folder.path().toUtf8()); }

    private:
        const QTemporaryDir m_folder;
    };

    const StateFolder m_state;
    platform::Platform m_platform = platform::makePlatform();
};

} // namespace zorvane::tests
