#include "own_platform.h"

#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using zorvane::tests::OwnPlatform;

/** That every system has each port, and what is to say of the smallest of them. */
class TestPlatformContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyServiceIsThere()
    {
        OwnPlatform platform;
        QVERIFY(platform->scheduler);
        QVERIFY(platform->log);
        QVERIFY(platform->preferences);
        QVERIFY(platform->suites);
        QVERIFY(platform->signatures);
        QVERIFY(platform->bundles);
        QVERIFY(platform->walk);
        QVERIFY(platform->icons);
        QVERIFY(platform->mainBundle);
        QVERIFY(platform->entitlements);
        QVERIFY(platform->filterManager);
        QVERIFY(platform->systemExtensions);
        QVERIFY(platform->actions);
        QVERIFY(platform->fileAccess);
        QVERIFY(platform->motion);
        QVERIFY(platform->manifestFetcher);
        QVERIFY(platform->notifications);
    }

    void theFolderForSetAsideListsIsAPath()
    {
        OwnPlatform platform;
        QVERIFY(platform->setAsideFolder.is_absolute());
    }

    void theDownloadsFolderIsAPath()
    {
        OwnPlatform platform;
        const QList<QString> folders = platform->actions->downloadsFolders();
        QVERIFY(!folders.isEmpty());
        QVERIFY(folders.first().startsWith(u'/'));
        QVERIFY(!folders.first().endsWith(u'/'));
    }

    void whatIsNoFileIsNotGranted()
    {
        OwnPlatform platform;
        QVERIFY(!platform->fileAccess->begin(QUrl(u"https://example.org/A.app"_s)));
        QVERIFY(!platform->fileAccess->begin(QUrl()));
    }

    void aWatchOfMotionCanBeReplaced()
    {
        OwnPlatform platform;
        platform->motion->watch([] {});
        platform->motion->watch([] {});
        static_cast<void>(platform->motion->isReduced());
    }
};

QTEST_MAIN(TestPlatformContract)
#include "tst_platform_contract.moc"
