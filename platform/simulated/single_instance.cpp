#include "platform/simulated/single_instance.h"

#include "platform/simulated/log.h"
#include "platform/simulated/report.h"
#include "platform/simulated/simulated_system.h"

#include <fcntl.h>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <thread>
#include <unistd.h>

namespace zorvane::platform
{

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace simulated
{

namespace
{

// The first may be starting or ending just now, and is then asked again or succeeded.
constexpr auto patience = 5s;
constexpr auto pause = 50ms;
constexpr int answerTimeout = 2000; // milliseconds

constexpr qint64 longestToken = 4096;
constexpr qsizetype longestAddress = 100; // bytes; systems differ a little

const char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

} // namespace

LockedInstance::LockedInstance(std::filesystem::path folder, QString name)
    : m_folder(std::move(folder))
    , m_name(std::move(name))
{
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
        while (QLocalSocket *caller = m_server.nextPendingConnection())
            hear(caller);
    });
}

LockedInstance::~LockedInstance()
{
    m_server.close(); // while the way to the socket's file is still open
    if (m_folderDescriptor >= 0)
        ::close(m_folderDescriptor);
}

void LockedInstance::onBringForward(std::function<void()> action)
{
    m_bringForward = std::move(action);
    if (!m_bringForward)
        m_server.close();
}

SingleInstance::Outcome LockedInstance::acquire()
{
    if (const auto error = makeFolder(m_folder))
        return refuse(*error);
    if (!QFileInfo(textOf(m_folder)).isWritable())
        return refuse(u"it cannot be written to"_s);
    m_folderDescriptor = ::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (const QDeadlineTimer deadline(patience); !deadline.hasExpired();
         std::this_thread::sleep_for(pause)) {
        m_lock = FileLock::attempt(m_folder / (m_name + u".lock"_s).toStdString());
        if (m_lock.isHeld()) {
            listen();
            return Outcome::First;
        }
        if (!m_lock.error().isEmpty())
            return refuse(m_lock.error());
        switch (callFirst()) {
        case Answer::Came:
            return Outcome::AnotherRuns;
        case Answer::Silent:
            qCWarning(simulatedSystem).noquote() << m_name << "already runs and does not answer";
            return Outcome::AnotherRuns;
        case Answer::NoListener:
            break;
        }
    }
    qCWarning(simulatedSystem).noquote() << m_name << "already runs and cannot be reached";
    return Outcome::AnotherRuns;
}

SingleInstance::Outcome LockedInstance::refuse(const QString &reason) const
{
    qCCritical(simulatedSystem).noquote().nospace()
        << m_name << " cannot work with its state folder " << textOf(m_folder) << ": " << reason
        << ". $ZORVANE_SYSTEM_DIR can name another one.";
    return Outcome::Unusable;
}

QString LockedInstance::socketAddress() const
{
    const QString file = u"/"_s + m_name + u".socket"_s;
    QString address = textOf(m_folder) + file;
    if (address.toUtf8().size() <= longestAddress)
        return address;
    return u"/proc/self/fd/"_s + QString::number(m_folderDescriptor) + file;
}

void LockedInstance::listen()
{
    const QString address = socketAddress();
    QLocalServer::removeServer(address); // left by a program that was killed
    if (!m_server.listen(address))
        qCWarning(simulatedSystem).noquote()
            << "A second start will not be heard:" << m_server.errorString();
}

void LockedInstance::hear(QLocalSocket *caller)
{
    QObject::connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
    const auto read = [this, caller] {
        if (!caller->canReadLine()) {
            if (caller->bytesAvailable() > longestToken)
                caller->abort();
            return;
        }
        const QByteArray token = caller->readLine(longestToken).trimmed();
        if (!token.isEmpty())
            qputenv(tokenVariable, token);
        if (m_bringForward)
            m_bringForward();
        caller->write("ok\n");
        caller->disconnectFromServer();
    };
    QObject::connect(caller, &QLocalSocket::readyRead, caller, read);
    if (caller->bytesAvailable() > 0)
        read();
}

LockedInstance::Answer LockedInstance::callFirst() const
{
    QLocalSocket socket;
    socket.connectToServer(socketAddress());
    if (!socket.waitForConnected(answerTimeout))
        return Answer::NoListener;
    socket.write(qgetenv(tokenVariable).left(longestToken - 2) + '\n');
    const bool answered = socket.waitForBytesWritten(answerTimeout)
        && (socket.canReadLine() || socket.waitForReadyRead(answerTimeout));
    if (answered)
        return Answer::Came;
    // Hung up instead of answering: it is about to end, and its place will be free.
    const bool hungUp = socket.state() != QLocalSocket::ConnectedState;
    return hungUp ? Answer::NoListener : Answer::Silent;
}

} // namespace simulated

std::unique_ptr<SingleInstance> makeSingleInstance()
{
    simulated::useLogFormat();
    return std::make_unique<simulated::LockedInstance>(
        simulated::SimulatedSystem::standardFolder(), u"zorvane"_s);
}

} // namespace zorvane::platform
