#include "desktop_bus/private_bus.h"

#include <QFile>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

/** Starts no services, so that a test has those that it starts itself and no others. */
const char configuration[] = R"(<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus()
{
    QFile file(m_folder.filePath(u"bus.conf"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) < 0)
        qFatal("%s cannot be written", qPrintable(file.fileName()));
    file.close();
    m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_daemon.start(u"dbus-daemon"_s,
        {u"--config-file"_s, file.fileName(), u"--nofork"_s, u"--print-address=1"_s});
    while (!m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead())
            qFatal("dbus-daemon: %s", qPrintable(m_daemon.errorString()));
    }
    m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
}

PrivateBus::~PrivateBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

BusMember::BusMember(const PrivateBus &bus)
    : m_name(QUuid::createUuid().toString())
{
    if (!QDBusConnection::connectToBus(bus.address(), m_name).isConnected())
        qFatal("The bus at %s cannot be reached", qPrintable(bus.address()));
}

BusMember::~BusMember()
{
    QDBusConnection::disconnectFromBus(m_name);
}

} // namespace zorvane::tests
