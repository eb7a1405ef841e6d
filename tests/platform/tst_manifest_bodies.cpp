// How much of an answer is taken, however it travels.

#include "fetcher_fixture.h"
#include "https/program_output.h"

#include <QFile>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using namespace zorvane::tests;

namespace
{

constexpr qsizetype limit = FetcherFixture::limit;

/** An answer whose body is the same in all but the way it travels. */
QByteArray sentAs(const QString &transfer, const QByteArray &body)
{
    if (transfer == "length"_L1)
        return response(body);
    if (transfer == "gzip"_L1)
        return response(gzip(body), 200, "Content-Encoding: gzip\r\n");
    if (transfer == "deflate"_L1)
        return response(qCompress(body).mid(4), 200, "Content-Encoding: deflate\r\n");
    if (transfer == "chunked"_L1)
        return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunked(body)
            + "0\r\n\r\n";
    return "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + body;
}

/** The most memory that this process has had at one time, in bytes. */
qint64 mostMemory()
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("/proc/self/status cannot be read");
    const QByteArray status = file.readAll();
    const QByteArray line = status.mid(status.indexOf("VmHWM:") + 6);
    return line.first(line.indexOf("kB")).trimmed().toLongLong() * 1024;
}

} // namespace

class TestManifestBodies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_f.restart(); }

    void readsUpToOneByteBeyondTheLimit_data()
    {
        QTest::addColumn<QString>("transfer");
        QTest::addColumn<qsizetype>("size");
        for (const QString &transfer :
            {u"length"_s, u"chunked"_s, u"until the end"_s, u"gzip"_s, u"deflate"_s}) {
            for (const qsizetype size :
                {qsizetype(0), qsizetype(1), limit - 1, limit, limit + 1, limit + 2, 10 * limit})
                QTest::addRow("%s, %lld bytes", qPrintable(transfer), qlonglong(size))
                    << transfer << size;
        }
    }

    void readsUpToOneByteBeyondTheLimit()
    {
        QFETCH(QString, transfer);
        QFETCH(qsizetype, size);
        const QByteArray body = sampleBody(size);
        m_f.server->answer(u"/manifest"_s, sentAs(transfer, body));
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->status, 200);
        QVERIFY(answer->body == body.first(std::min(size, limit + 1)));
    }

    void takesABodyInManyPieces()
    {
        const QByteArray bytes = sentAs(u"chunked"_s, sampleBody(limit));
        m_f.server->handle(
            u"/manifest"_s, [bytes, sent = std::make_shared<qsizetype>(0)](QSslSocket &socket) {
                repeat(socket, 1, [bytes, sent](QSslSocket &each) {
                    each.write(bytes.mid(*sent, 1500));
                    *sent += 1500;
                });
            });
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->body, sampleBody(limit));
    }

    void endsABodyThatNeverEnds()
    {
        auto sent = std::make_shared<qint64>(0);
        m_f.server->handle(u"/manifest"_s, [sent](QSslSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\n\r\n");
            repeat(socket, 0, [sent](QSslSocket &each) {
                if (each.bytesToWrite() < 65536)
                    *sent += each.write(QByteArray(16384, ' '));
            });
        });
        const auto answer = m_f.fetched();
        QVERIFY(answer);
        QCOMPARE(answer->body.size(), limit + 1);
        // What is on its way in buffers comes on top, but no more than that.
        QVERIFY2(*sent < qint64{16} << 20, qPrintable(QString::number(*sent)));
    }

    void unpacksNoMoreThanItMay()
    {
        const QByteArray bomb
            = programOutput(u"sh"_s, {u"-c"_s, u"head -c 200000000 /dev/zero | gzip -1"_s});
        QVERIFY(bomb.size() > 100'000);
        m_f.server->answer(u"/manifest"_s, response(bomb, 200, "Content-Encoding: gzip\r\n"));
        const QElapsedTimer clock = startedClock();
        const qint64 before = mostMemory();
        // Either is right: that it was refused as a whole, or that it was cut off.
        if (const auto answer = m_f.fetched())
            QCOMPARE(answer->body.size(), limit + 1);
        QVERIFY(clock.elapsed() < 10'000);
        QVERIFY2(
            mostMemory() - before < 50'000'000, qPrintable(QString::number(mostMemory() - before)));
    }

private:
    FetcherFixture m_f;
};

QTEST_GUILESS_MAIN(TestManifestBodies)
#include "tst_manifest_bodies.moc"
