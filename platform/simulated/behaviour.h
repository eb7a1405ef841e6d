#pragma once

#include "platform/platform_error.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>

namespace zorvane::platform::simulated
{

/** How the system answers the request to activate an extension. */
enum class Approval { Granted, Ask, Denied };

/** What can be made to fail. */
enum class Operation { Load, Save, Activate };

/** An error that the system answers an operation with. */
struct Fault {
    Operation operation = Operation::Load;
    PlatformError error;
    /** How often; absent: every time. */
    std::optional<qint64> times;

    friend bool operator==(const Fault &, const Fault &) = default;
};

/** How the simulated system behaves: what "system.json" says, every key optional. */
struct Behaviour {
    std::filesystem::path bundlePath = "/Applications/Zorvane.app";
    /** Absent where the file says null, as are the two versions and the groups. */
    std::optional<QString> bundleIdentifier;
    std::optional<QString> shortVersion;
    std::optional<QString> build;
    std::optional<QStringList> applicationGroups;
    Approval approval = Approval::Granted;
    std::chrono::milliseconds activationDelay{600};
    bool rebootNeeded = false;
    QList<Fault> faults;

    friend bool operator==(const Behaviour &, const Behaviour &) = default;
};

/** A Mac on which all is well. */
[[nodiscard]] Behaviour standardBehaviour();

/**
 * Reads the text of "system.json". An unknown key, and a value that is not what it should be, is
 * reported and counts as absent; a text that holds no JSON object leaves everything standard.
 * @p name names the file in reports.
 */
[[nodiscard]] Behaviour readBehaviour(QByteArrayView text, const QString &name);

} // namespace zorvane::platform::simulated
