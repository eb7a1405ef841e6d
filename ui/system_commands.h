#pragma once

#include "platform/motion_preference.h"
#include "platform/system_actions.h"

#include <QObject>
#include <qqmlregistration.h>

namespace zorvane::ui
{

/** What the windows ask of the system itself. Main thread; the ports outlive it. */
class SystemCommands final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY reducesMotionChanged)

public:
    SystemCommands(platform::SystemActions &actions, platform::MotionPreference &motion);
    ~SystemCommands() override;

    /** The user wants things to fade where they would move. */
    [[nodiscard]] bool reducesMotion() const { return m_motion.isReduced(); }

    Q_INVOKABLE void openSystemSettings();
    Q_INVOKABLE void quit();

Q_SIGNALS:
    void reducesMotionChanged();

private:
    platform::SystemActions &m_actions;
    platform::MotionPreference &m_motion;
};

} // namespace zorvane::ui
