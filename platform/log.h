#pragma once

#include <QString>

namespace zorvane::platform
{

/** The system's log, under the product's subsystem and one category. Safe to use from any thread.
 */
class Log
{
public:
    virtual ~Log() = default;

    /** A line at the default level. All of it is public. */
    virtual void notice(const QString &line) = 0;
    /** A line at the error level. All of it is public. */
    virtual void error(const QString &line) = 0;
};

} // namespace zorvane::platform
