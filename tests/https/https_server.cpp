#include "https/https_server.h"

#include "https/program_output.h"

#include <memory>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

HttpsServer::HttpsServer(const QSslConfiguration &configuration)
{
    setSslConfiguration(configuration);
    connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (auto *const socket = qobject_cast<QSslSocket *>(nextPendingConnection()))
            serve(*socket);
    });
    if (!listen(QHostAddress::LocalHost))
        qFatal("No port on loopback: %s", qPrintable(errorString()));
}

QUrl HttpsServer::url(const QString &path, const QString &host) const
{
    return {u"https://%1:%2%3"_s.arg(host).arg(serverPort()).arg(path)};
}

void HttpsServer::handle(const QString &path, const Handler &handler)
{
    m_handlers.insert(path.toLatin1(), handler);
}

void HttpsServer::answer(const QString &path, const QByteArray &bytes)
{
    handle(path, [bytes](QSslSocket &socket) {
        socket.write(bytes);
        socket.disconnectFromHost();
    });
}

void HttpsServer::redirect(const QString &path, int status, const QString &location)
{
    answer(path, response({}, status, "Location: " + location.toUtf8() + "\r\n"));
}

void HttpsServer::serve(QSslSocket &socket)
{
    connect(&socket, &QSslSocket::disconnected, &socket, &QObject::deleteLater);
    const auto head = std::make_shared<QByteArray>();
    connect(&socket, &QSslSocket::readyRead, this, [this, &socket, head] {
        *head += socket.readAll();
        if (!head->contains("\r\n\r\n"))
            return;
        const QByteArray request = std::exchange(*head, {});
        requests.append(request);
        const QByteArray path = request.split(' ').value(1);
        if (const Handler handler = m_handlers.value(path))
            handler(socket);
        else
            socket.write(response({}, 404));
    });
}

QByteArray response(const QByteArray &body, int status, const QByteArray &moreHeaders)
{
    return "HTTP/1.1 " + QByteArray::number(status) + " Answer\r\nContent-Length: "
        + QByteArray::number(body.size()) + "\r\n" + moreHeaders + "\r\n" + body;
}

QByteArray chunked(const QByteArray &body)
{
    QByteArray result;
    qsizetype size = 1;
    for (qsizetype from = 0; from < body.size(); from += size, size = size * 3 % 4001) {
        const QByteArray chunk = body.mid(from, size);
        result += QByteArray::number(chunk.size(), 16) + "\r\n" + chunk + "\r\n";
    }
    return result;
}

QByteArray gzip(const QByteArray &bytes)
{
    return programOutput(u"gzip"_s, {u"-c"_s}, bytes);
}

void repeat(QSslSocket &socket, int interval, std::function<void(QSslSocket &)> step)
{
    auto *const timer = new QTimer(&socket);
    QObject::connect(timer, &QTimer::timeout, &socket, [&socket, step = std::move(step)] {
        if (socket.state() == QAbstractSocket::ConnectedState)
            step(socket);
    });
    timer->start(interval);
}

} // namespace zorvane::tests
