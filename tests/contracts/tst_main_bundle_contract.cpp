#include "own_platform.h"

#include <QTest>
#include <thread>

using zorvane::tests::OwnPlatform;

/** What every system says of the bundle that the program runs from. */
class TestMainBundleContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itStandsSomewhere()
    {
        OwnPlatform platform;
        QVERIFY(platform->mainBundle->location().is_absolute());
    }

    void whatItHasIsNoEmptyText()
    {
        OwnPlatform platform;
        const auto &bundle = *platform->mainBundle;
        for (const auto &text : {bundle.identifier(), bundle.shortVersion(), bundle.buildVersion()})
            QVERIFY(!text || !text->isEmpty());
    }

    void itIsTheSameOnEveryThread()
    {
        OwnPlatform platform;
        const auto all = [&bundle = *platform->mainBundle] {
            return std::tuple(bundle.identifier(), bundle.location(), bundle.shortVersion(),
                bundle.buildVersion());
        };
        auto elsewhere = decltype(all())();
        std::thread([&] { elsewhere = all(); }).join();
        QVERIFY(elsewhere == all());
    }
};

QTEST_GUILESS_MAIN(TestMainBundleContract)
#include "tst_main_bundle_contract.moc"
