#pragma once

#include "platform/log.h"

namespace zorvane::platform::simulated
{

/** Has all messages of this program show time, level and category, unless $QT_MESSAGE_PATTERN says
 * how they look. */
void useLogFormat();

/**
 * The product's log lines on standard error, each with its level and with subsystem and category as
 * the name of Qt's logging category. Lines of the default level are Qt's "info", errors "critical".
 */
class StandardErrorLog final : public Log
{
public:
    void notice(const QString &line) override;
    void error(const QString &line) override;
};

} // namespace zorvane::platform::simulated
