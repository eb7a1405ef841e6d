#include "own_platform.h"

#include <QTest>
#include <thread>

using zorvane::tests::OwnPlatform;

/** What every system says of the program's entitlements; a test may have none. */
class TestEntitlementsContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void groupsHaveNames()
    {
        OwnPlatform platform;
        const auto groups = platform->entitlements->applicationGroups();
        QVERIFY(!groups || !groups->contains(QString()));
    }

    void theyAreTheSameOnEveryThread()
    {
        OwnPlatform platform;
        std::optional<QStringList> groups;
        std::thread([&] { groups = platform->entitlements->applicationGroups(); }).join();
        QCOMPARE(groups, platform->entitlements->applicationGroups());
    }
};

QTEST_GUILESS_MAIN(TestEntitlementsContract)
#include "tst_entitlements_contract.moc"
