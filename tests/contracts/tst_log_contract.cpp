#include "own_platform.h"

#include <QTest>
#include <thread>

using namespace Qt::StringLiterals;
using zorvane::tests::OwnPlatform;

/** What every system's log takes. */
class TestLogContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLineIsTakenOnEveryThread()
    {
        OwnPlatform platform;
        for (const QString &line : {u"System extension activation finished"_s, QString(),
                 u"100 % %s %n \"quoted\" – 拒否 🍏"_s, QString(100'000, u'x')}) {
            platform->log->notice(line);
            std::thread([&] { platform->log->error(line); }).join();
        }
    }
};

QTEST_GUILESS_MAIN(TestLogContract)
#include "tst_log_contract.moc"
