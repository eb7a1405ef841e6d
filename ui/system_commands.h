#pragma once

#include "platform/system_actions.h"

#include <QObject>
#include <qqmlregistration.h>

namespace zorvane::ui
{

/** What the windows ask of the system itself. Main thread; @p actions outlive it. */
class SystemCommands final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    explicit SystemCommands(platform::SystemActions &actions);

    Q_INVOKABLE void openSystemSettings();
    Q_INVOKABLE void quit();

private:
    platform::SystemActions &m_actions;
};

} // namespace zorvane::ui
