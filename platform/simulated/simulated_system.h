#pragma once

#include "platform/simulated/behaviour.h"
#include "platform/simulated/files.h"

#include <filesystem>
#include <mutex>
#include <optional>

namespace zorvane::platform::simulated
{

/**
 * The state folder of the simulated system, and how the system behaves at this moment. Nothing is
 * made or read before it is needed. Safe to use from any thread; blocks on the disk.
 */
class SimulatedSystem
{
public:
    explicit SimulatedSystem(std::filesystem::path folder);

    /** $ZORVANE_SYSTEM_DIR, or "zorvane/system" in the user's data folder. */
    [[nodiscard]] static std::filesystem::path standardFolder();
    /** "zorvane/set-aside" in the user's data folder: not the system's, the user may look there. */
    [[nodiscard]] static std::filesystem::path setAsideFolder();

    [[nodiscard]] const std::filesystem::path &folder() const { return m_folder; }
    [[nodiscard]] std::filesystem::path preferencesFile(const QString &domain) const;
    [[nodiscard]] std::filesystem::path filterConfigurationFile() const;
    [[nodiscard]] std::filesystem::path extensionFile() const;
    [[nodiscard]] std::filesystem::path notificationsFile() const;

    /** What "system.json" says now. What is wrong in it is reported once for each writing. */
    [[nodiscard]] Behaviour behaviour() const;

    /**
     * The error that this operation has to fail with: the first fault for it that is not used up.
     * Each call uses one up. Uses are counted in each program for itself, and anew when
     * "system.json" is written.
     */
    [[nodiscard]] std::optional<PlatformError> takeFault(Operation operation);

private:
    void refresh() const;

    const std::filesystem::path m_folder;
    mutable std::mutex m_mutex;
    mutable FileContents m_contents;
    /** As read, the faults' times counted down. */
    mutable Behaviour m_behaviour;
};

} // namespace zorvane::platform::simulated
