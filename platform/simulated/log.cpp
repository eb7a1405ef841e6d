#include "platform/simulated/log.h"

#include <QLoggingCategory>

namespace zorvane::platform::simulated
{

namespace
{

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(systemExtension, "dev.kestrelworks.Zorvane:SystemExtension")

} // namespace

void useLogFormat()
{
    if (!qEnvironmentVariableIsSet("QT_MESSAGE_PATTERN"))
        qSetMessagePattern(u"%{time yyyy-MM-dd HH:mm:ss.zzz} "
                           "%{if-debug}debug%{endif}%{if-info}default%{endif}"
                           "%{if-warning}warning%{endif}%{if-critical}error%{endif}"
                           "%{if-fatal}fault%{endif} %{category}: %{message}"_s);
}

void StandardErrorLog::notice(const QString &line)
{
    qCInfo(systemExtension).noquote().nospace() << line;
}

void StandardErrorLog::error(const QString &line)
{
    qCCritical(systemExtension).noquote().nospace() << line;
}

} // namespace zorvane::platform::simulated
