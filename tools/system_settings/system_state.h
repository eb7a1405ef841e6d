#pragma once

#include "platform/simulated/extension_state.h"
#include "platform/simulated/filter_configuration.h"
#include "platform/simulated/simulated_system.h"

#include <memory>
#include <QObject>
#include <qqmlregistration.h>
#include <QTimer>

namespace zorvane::tools
{

/**
 * What the simulated system's settings show and change: the extension's approval and the filter's
 * configuration, as their files have them at any time. Main thread.
 */
class SystemState final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program's main")
    Q_PROPERTY(QString folder READ folder CONSTANT)
    Q_PROPERTY(bool isApproved READ isApproved NOTIFY changed)
    Q_PROPERTY(bool isActive READ isActive NOTIFY changed)
    Q_PROPERTY(Approval approval READ approval NOTIFY changed)
    Q_PROPERTY(bool isFilterConfigured READ isFilterConfigured NOTIFY changed)
    Q_PROPERTY(bool isFilterEnabled READ isFilterEnabled NOTIFY changed)
    Q_PROPERTY(int identityCount READ identityCount NOTIFY changed)
    Q_PROPERTY(int applicationCount READ applicationCount NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)

public:
    /** How the system answers a program that wants its extension activated. */
    enum class Approval {
        Granted, ///< it allows every extension by itself
        Ask, ///< it asks the user, here
        Denied, ///< it refuses every extension
    };
    Q_ENUM(Approval)

    explicit SystemState(std::filesystem::path folder);

    [[nodiscard]] QString folder() const;
    [[nodiscard]] std::shared_ptr<const platform::simulated::SimulatedSystem> system() const
    {
        return m_system;
    }
    [[nodiscard]] bool isApproved() const { return m_shown.extension.approved; }
    [[nodiscard]] bool isActive() const { return m_shown.extension.active; }
    [[nodiscard]] Approval approval() const { return m_shown.approval; }
    /** What a filter extension would read now. */
    [[nodiscard]] const platform::simulated::FilterConfiguration &filter() const
    {
        return m_shown.filter;
    }
    [[nodiscard]] bool isFilterConfigured() const { return filter().hasProviderConfiguration(); }
    [[nodiscard]] bool isFilterEnabled() const { return filter().isEnabled(); }
    [[nodiscard]] int identityCount() const;
    [[nodiscard]] int applicationCount() const;
    /** Why the last decision could not be stored; empty if it could. */
    [[nodiscard]] QString error() const { return m_shown.error; }

    /** Allows the extension: a program that waits for it goes on. */
    Q_INVOKABLE void allow();
    /** Takes the permission back, and with it the extension out of use. */
    Q_INVOKABLE void block();

Q_SIGNALS:
    void changed();

private:
    struct Shown {
        platform::simulated::ExtensionState extension;
        Approval approval = Approval::Granted;
        platform::simulated::FilterConfiguration filter;
        QString error;

        friend bool operator==(const Shown &, const Shown &) = default;
    };

    void decide(const platform::simulated::ExtensionState &state);
    void refresh();
    void readExtension(Shown &shown);
    void readFilter(Shown &shown);

    std::shared_ptr<platform::simulated::SimulatedSystem> m_system;
    Shown m_shown;
    std::optional<platform::simulated::FileStamp> m_extensionStamp;
    std::optional<platform::simulated::FileStamp> m_filterStamp;
    QTimer m_timer;
};

} // namespace zorvane::tools
