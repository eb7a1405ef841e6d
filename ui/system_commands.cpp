#include "ui/system_commands.h"

namespace zorvane::ui
{

SystemCommands::SystemCommands(platform::SystemActions &actions)
    : m_actions(actions)
{
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
