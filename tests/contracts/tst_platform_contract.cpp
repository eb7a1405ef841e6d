#include "own_state.h"
#include "platform/platform.h"

#include <optional>
#include <QGuiApplication>
#include <QTest>
#include <thread>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using zorvane::tests::OwnState;

/** What every system's ports have in common, asked for as the program's main asks for them. */
class TestPlatformContract : public QObject
{
    Q_OBJECT

private:
    const OwnState m_state;
    std::optional<Platform> m_platform;

private Q_SLOTS:
    void init() { m_platform.emplace(makePlatform()); }
    void cleanup() { m_platform.reset(); }

    void everyServiceIsThere()
    {
        QVERIFY(m_platform->scheduler);
        QVERIFY(m_platform->log);
        QVERIFY(m_platform->preferences);
        QVERIFY(m_platform->suites);
        QVERIFY(m_platform->signatures);
        QVERIFY(m_platform->bundles);
        QVERIFY(m_platform->walk);
        QVERIFY(m_platform->icons);
        QVERIFY(m_platform->mainBundle);
        QVERIFY(m_platform->entitlements);
        QVERIFY(m_platform->filterManager);
        QVERIFY(m_platform->systemExtensions);
        QVERIFY(m_platform->actions);
        QVERIFY(m_platform->fileAccess);
        QVERIFY(m_platform->motion);
        QVERIFY(m_platform->manifestFetcher);
        QVERIFY(m_platform->notifications);
    }

    void theMainBundleStandsSomewhere()
    {
        QVERIFY(m_platform->mainBundle->location().is_absolute());
        if (const auto identifier = m_platform->mainBundle->identifier())
            QVERIFY(!identifier->isEmpty());
    }

    void theLogTakesEveryLineOnEveryThread()
    {
        for (const QString &line : {u"System extension activation finished"_s, QString(),
                 u"100 % %s %n \"quoted\" – 拒否 🍏"_s, QString(100'000, u'x')}) {
            m_platform->log->notice(line);
            std::thread([&] { m_platform->log->error(line); }).join();
        }
    }

    void theDownloadsFolderIsAPath()
    {
        const QList<QString> folders = m_platform->actions->downloadsFolders();
        QVERIFY(!folders.isEmpty());
        QVERIFY(folders.first().startsWith(u'/'));
        QVERIFY(!folders.first().endsWith(u'/'));
    }

    void whatIsNoFileIsNotGranted()
    {
        QVERIFY(!m_platform->fileAccess->begin(QUrl(u"https://example.org/A.app"_s)));
        QVERIFY(!m_platform->fileAccess->begin(QUrl()));
    }

    void aWatchOfMotionCanBeReplaced()
    {
        m_platform->motion->watch([] {});
        m_platform->motion->watch([] {});
        static_cast<void>(m_platform->motion->isReduced());
    }

    void theNotificationsAnswerAfterTheCall()
    {
        std::optional<NotificationAuthorization> state;
        m_platform->notifications->authorization([&](auto answer) { state = answer; });
        QVERIFY(!state);
        QTRY_VERIFY(state.has_value());

        bool notNeeded = false;
        m_platform->notifications->whenNotNeeded([&] { notNeeded = true; });
        QVERIFY(!notNeeded);
        QTRY_VERIFY(notNeeded);
    }
};

QTEST_MAIN(TestPlatformContract)
#include "tst_platform_contract.moc"
