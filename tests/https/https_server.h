#pragma once

#include <functional>
#include <QHash>
#include <QList>
#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <QUrl>

namespace zorvane::tests
{

/** An HTTPS server on loopback that answers each path with the very bytes a test wants. */
class HttpsServer final : public QSslServer
{
public:
    /** Sends an answer; the connection stays open unless it closes it. */
    using Handler = std::function<void(QSslSocket &socket)>;

    explicit HttpsServer(const QSslConfiguration &configuration);

    [[nodiscard]] QUrl url(
        const QString &path, const QString &host = QStringLiteral("localhost")) const;

    void handle(const QString &path, const Handler &handler);
    /** Answers with these bytes, head and all, and closes the connection. */
    void answer(const QString &path, const QByteArray &bytes);
    void redirect(const QString &path, int status, const QString &location);

    /** The head of each request, in order. */
    QList<QByteArray> requests;

private:
    void serve(QSslSocket &socket);

    QHash<QByteArray, Handler> m_handlers;
};

/** A whole answer, its length in its head. */
[[nodiscard]] QByteArray response(
    const QByteArray &body, int status = 200, const QByteArray &moreHeaders = {});

/** @p body in chunks of several sizes, without the closing one. */
[[nodiscard]] QByteArray chunked(const QByteArray &body);

/** @p bytes as a gzip file holds them. */
[[nodiscard]] QByteArray gzip(const QByteArray &bytes);

/** Does @p step every @p interval until the connection ends. */
void repeat(QSslSocket &socket, int interval, std::function<void(QSslSocket &)> step);

} // namespace zorvane::tests
