#pragma once

#include <QString>

namespace zorvane::platform
{

/** An error of the system as it reports it: who says it, which one, and the text for the user. */
struct PlatformError {
    QString domain;
    qint64 code = 0;
    /** In the user's language, fit to be shown as it stands. */
    QString description;

    friend bool operator==(const PlatformError &, const PlatformError &) = default;
};

} // namespace zorvane::platform
