#pragma once

#include <QUrl>

namespace zorvane::platform
{

/** Access to files that the user handed to the program. Main thread. */
class FileAccess
{
public:
    virtual ~FileAccess() = default;

    /** True if access was granted; then end() must follow once. */
    [[nodiscard]] virtual bool begin(const QUrl &url) = 0;
    virtual void end(const QUrl &url) = 0;
};

} // namespace zorvane::platform
