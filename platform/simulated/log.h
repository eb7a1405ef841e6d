#pragma once

#include "platform/log.h"

namespace zorvane::platform::simulated
{

/**
 * The product's log lines on standard error, each with its level and with subsystem and category as
 * the name of Qt's logging category. Lines of the default level are Qt's "info", errors "critical".
 */
class StandardErrorLog final : public Log
{
public:
    /** Also gives all messages of this program a form that shows level and category, unless
     * $QT_MESSAGE_PATTERN gives one. */
    StandardErrorLog();

    void notice(const QString &line) override;
    void error(const QString &line) override;
};

} // namespace zorvane::platform::simulated
