#pragma once

#include <QTemporaryDir>

namespace zorvane::tests
{

/** Keeps a simulated system's state in a folder that goes with the object; a real system has its
 * own. To be made before the ports are. */
class OwnState
{
public:
    OwnState() { qputenv("ZORVANE_SYSTEM_DIR", m_folder.path().toUtf8()); }

private:
    const QTemporaryDir m_folder;
};

} // namespace zorvane::tests
