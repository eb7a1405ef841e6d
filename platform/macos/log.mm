#include "platform/macos/adapters.h"

#import <os/log.h>

namespace zorvane::platform::macos
{

namespace
{

class UnifiedLog final : public Log
{
public:
    void notice(const QString &line) override { os_log(m_log, "%{public}s", qUtf8Printable(line)); }

    void error(const QString &line) override
    {
        os_log_error(m_log, "%{public}s", qUtf8Printable(line));
    }

private:
    const os_log_t m_log = os_log_create("dev.kestrelworks.Zorvane", "SystemExtension");
};

} // namespace

std::unique_ptr<Log> makeLog()
{
    return std::make_unique<UnifiedLog>();
}

} // namespace zorvane::platform::macos
