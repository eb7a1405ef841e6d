#include "platform/simulated/log.h"

#include <mutex>
#include <QList>
#include <QRegularExpression>
#include <QTest>
#include <thread>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;

namespace
{

struct Message {
    QtMsgType type;
    QString category;
    QString text;
    QString formatted;

    friend bool operator==(const Message &, const Message &) = default;
};

std::mutex messagesMutex;
QList<Message> messages;

void keepMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const std::lock_guard lock(messagesMutex);
    messages.append(
        {type, QString::fromUtf8(context.category), text, qFormatLogMessage(type, context, text)});
}

const QString category = u"dev.kestrelworks.Zorvane:SystemExtension"_s;

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        messages.clear();
        qInstallMessageHandler(keepMessage);
    }
    void cleanup() { qInstallMessageHandler(nullptr); }

    void aLineIsWrittenExactlyAsItIs_data()
    {
        QTest::addColumn<QString>("line");

        QTest::newRow("plain") << u"System extension activation finished"_s;
        QTest::newRow("quotes and signs") << u"Failed: \"%1\" 100 % \\n %{message}"_s;
        QTest::newRow("other letters") << u"Zugriff verweigert – 拒否 🍏"_s;
        QTest::newRow("blanks at both ends") << u"  a  "_s;
        QTest::newRow("empty") << QString();
    }

    void aLineIsWrittenExactlyAsItIs()
    {
        QFETCH(QString, line);
        StandardErrorLog log;
        log.notice(line);
        log.error(line);
        QCOMPARE(messages.size(), 2);
        QCOMPARE(messages[0].type, QtInfoMsg);
        QCOMPARE(messages[1].type, QtCriticalMsg);
        for (const Message &message : messages) {
            QCOMPARE(message.category, category);
            QCOMPARE(message.text, line);
        }
    }

    void theFormShowsLevelSubsystemAndCategory()
    {
        useLogFormat();
        StandardErrorLog log;
        log.notice(u"saved"_s);
        log.error(u"not saved"_s);
        const QString time = u"^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} "_s;
        QCOMPARE(messages.size(), 2);
        const QRegularExpression notice(time + u"default "_s + category + u": saved$"_s);
        const QRegularExpression error(time + u"error "_s + category + u": not saved$"_s);
        QVERIFY2(notice.match(messages[0].formatted).hasMatch(), qPrintable(messages[0].formatted));
        QVERIFY2(error.match(messages[1].formatted).hasMatch(), qPrintable(messages[1].formatted));
    }

    void linesOfManyThreadsStayWhole()
    {
        StandardErrorLog log;
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&log] {
                for (int i = 0; i < 50; ++i)
                    log.notice(u"one whole line"_s);
            });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(messages.size(), 200);
        for (const Message &message : messages)
            QCOMPARE(message.text, u"one whole line"_s);
    }
};

QTEST_GUILESS_MAIN(TestLog)
#include "tst_log.moc"
