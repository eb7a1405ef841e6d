#include "platform/fetching_process/exchange_format.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::platform::fetching_process;

namespace
{

constexpr qsizetype limit = 10;

} // namespace

class TestExchangeFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRequestComesThroughAsItIs()
    {
        const ManifestRequest request{
            .address = QUrl(u"https://example.org:8443/a%20b%2Fc/ü.json?x=%26&y=1 2"_s),
            .accept = "application/json, text/*;q=0.5",
            .longestBody = 65536,
            .idleTimeout = 10s,
            .totalTimeout = 61001ms,
        };
        const auto read = decodedRequest(encodedRequest(request));
        QVERIFY(read);
        QCOMPARE(read->address, request.address);
        QCOMPARE(read->accept, request.accept);
        QCOMPARE(read->longestBody, request.longestBody);
        QCOMPARE(read->idleTimeout, request.idleTimeout);
        QCOMPARE(read->totalTimeout, request.totalTimeout);
    }

    void argumentsOfNoRequestAreRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("none") << QStringList();
        QTest::newRow("one too few") << QStringList{u"https://a/"_s, u"*/*"_s, u"1"_s, u"2"_s};
        QTest::newRow("one too many")
            << QStringList{u"https://a/"_s, u"*/*"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s};
        QTest::newRow("a body of no size")
            << QStringList{u"https://a/"_s, u"*/*"_s, u"-1"_s, u"2"_s, u"3"_s};
        QTest::newRow("no number")
            << QStringList{u"https://a/"_s, u"*/*"_s, u"1"_s, u"2s"_s, u"3"_s};
        QTest::newRow("a number beyond all numbers")
            << QStringList{u"https://a/"_s, u"*/*"_s, u"1"_s, u"2"_s, u"9223372036854775808"_s};
    }

    void argumentsOfNoRequestAreRefused()
    {
        QFETCH(QStringList, arguments);
        QVERIFY(!decodedRequest(arguments));
    }

    void aResponseComesThroughAsItIs_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("{}");
        QTest::newRow("lines") << QByteArray("\n\nerror x");
        QTest::newRow("zeros and more") << QByteArray("\0\xff\r\n\0", 5);
        QTest::newRow("the longest") << QByteArray(limit, 'x');
        QTest::newRow("longer than asked for") << QByteArray(limit + 1, 'x');
    }

    void aResponseComesThroughAsItIs()
    {
        QFETCH(QByteArray, body);
        const QByteArray answer = encodedAnswer(ManifestResponse{404, body});
        QVERIFY(answer.size() <= longestAnswer(limit));
        const auto read = decodedAnswer(answer, limit);
        QVERIFY(read);
        const auto *const response = std::get_if<ManifestResponse>(&*read);
        QVERIFY(response);
        QCOMPARE(response->status, 404);
        QCOMPARE(response->body, body);
    }

    void anErrorComesThroughAsItIs()
    {
        const PlatformError error{u"QNetworkReply"_s, -7, u"Größer als\nerwartet 🙂"_s};
        const auto read = decodedAnswer(encodedAnswer(error), limit);
        QVERIFY(read);
        QCOMPARE(std::get<PlatformError>(*read), error);
    }

    void anEndlessDescriptionIsCut()
    {
        for (const QString &character : {u"x"_s, u"€"_s, u"🙂"_s}) {
            const PlatformError error{u"D"_s, 1, character.repeated(100'000)};
            const QByteArray answer = encodedAnswer(error);
            QVERIFY(answer.size() <= longestAnswer(0));
            const auto read = decodedAnswer(answer, 0);
            QVERIFY(read);
            QCOMPARE(std::get<PlatformError>(*read).description, error.description.left(1000));
        }
    }

    void whatIsNoAnswerIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no line") << QByteArray("answer 200");
        QTest::newRow("an empty line") << QByteArray("\nbody");
        QTest::newRow("another word") << QByteArray("Answer 200\nbody");
        QTest::newRow("no status") << QByteArray("answer\nbody");
        QTest::newRow("an empty status") << QByteArray("answer \nbody");
        QTest::newRow("a status of letters") << QByteArray("answer ok\nbody");
        QTest::newRow("a status beyond all") << QByteArray("answer 99999999999\nbody");
        QTest::newRow("one word too many") << QByteArray("answer 200 ok\nbody");
        QTest::newRow("a body that is too long") << "answer 200\n" + QByteArray(limit + 2, 'x');
        QTest::newRow("an error without a code") << QByteArray("error D\ntext");
        QTest::newRow("an error with a code of letters") << QByteArray("error D x\ntext");
        QTest::newRow("a domain of two words") << QByteArray("error D E 1\ntext");
        QTest::newRow("a description that is too long") << "error D 1\n" + QByteArray(3001, 'x');
        QTest::newRow("a line that is too long") << "error " + QByteArray(200, 'D') + " 1\ntext";
    }

    void whatIsNoAnswerIsRefused()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!decodedAnswer(bytes, limit));
    }
};

QTEST_APPLESS_MAIN(TestExchangeFormat)
#include "tst_exchange_format.moc"
