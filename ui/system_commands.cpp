#include "ui/system_commands.h"

namespace zorvane::ui
{

SystemCommands::SystemCommands(platform::SystemActions &actions, platform::MotionPreference &motion)
    : m_actions(actions)
    , m_motion(motion)
{
    m_motion.watch([this] { Q_EMIT reducesMotionChanged(); });
}

SystemCommands::~SystemCommands()
{
    m_motion.watch(nullptr);
}

void SystemCommands::openSystemSettings()
{
    m_actions.openSystemSettings();
}

void SystemCommands::quit()
{
    m_actions.terminate();
}

} // namespace zorvane::ui
