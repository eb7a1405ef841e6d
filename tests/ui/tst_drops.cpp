#include "ui/window_drag.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const auto firstPath = u"/Users/someone/First App.app"_s;
const auto secondPath = u"/Users/someone/Second.app"_s;

void addBundles(WindowFixture &fixture)
{
    fixture.platform.addBundle(firstPath, u"org.example.first"_s, u"ABCDE12345"_s, u"First"_s);
    fixture.platform.addBundle(secondPath, u"org.example.second"_s, u"ABCDE12345"_s, u"Second"_s);
}

} // namespace

class TestDrops : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDragBesideItIsRefused()
    {
        WindowFixture fixture;
        WindowDrag drag(fixture, {firstPath});
        drag.moveTo({380, 20});
        QVERIFY(!drag.enter());
        QVERIFY(!fixture.store->isDropTargeted());
    }

    void aDropAddsTheApplicationByCopying()
    {
        WindowFixture fixture;
        addBundles(fixture);
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(drag.enter());
        QCOMPARE(drag.drop(), Qt::CopyAction);
        QVERIFY(!fixture.store->isDropTargeted());
        QVERIFY(fixture.store->isAddingApplication());
        fixture.settle();
        QCOMPARE(fixture.store->applications().size(), 1);
        QVERIFY(fixture.text(u"First"_s) != nullptr);
    }

    void aDropWhileAddingIsRefusedAndChangesNothing()
    {
        WindowFixture fixture;
        addBundles(fixture);
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        WindowDrag drag(fixture, {secondPath});
        QVERIFY(!drag.enter());
        QVERIFY(!fixture.store->isDropTargeted());
        QCOMPARE(drag.drop(), Qt::IgnoreAction);
        fixture.settle();
        QCOMPARE(fixture.store->applications().size(), 1);
        QCOMPARE(fixture.store->applications().first().name, u"First"_s);
    }

    void aDragThatWasOverItWhenAddingBeganIsRefusedAtTheDrop()
    {
        WindowFixture fixture;
        addBundles(fixture);
        WindowDrag drag(fixture, {secondPath});
        QVERIFY(drag.enter());
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        QCOMPARE(drag.drop(), Qt::IgnoreAction);
        QVERIFY(!fixture.store->isDropTargeted());
        fixture.settle();
        QCOMPARE(fixture.store->applications().size(), 1);
    }

    void aDragThatWaitsForTheAddingToEndIsAcceptedThen()
    {
        WindowFixture fixture;
        addBundles(fixture);
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        WindowDrag drag(fixture, {secondPath});
        QVERIFY(!drag.enter());
        fixture.settle();
        QVERIFY(drag.move());
        QVERIFY(fixture.store->isDropTargeted());
        QCOMPARE(drag.drop(), Qt::CopyAction);
        fixture.settle();
        QCOMPARE(fixture.store->applications().size(), 2);
    }

    void aDropOfSeveralBundlesAddsOnlyTheFirst()
    {
        WindowFixture fixture;
        addBundles(fixture);
        WindowDrag drag(fixture, {firstPath, secondPath});
        QVERIFY(drag.enter());
        QCOMPARE(drag.drop(), Qt::CopyAction);
        fixture.settle();
        QCOMPARE(fixture.store->applications().size(), 1);
        QCOMPARE(fixture.store->applications().first().name, u"First"_s);
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
    }

    void aDropWithoutAddressesIsRefused()
    {
        WindowFixture fixture;
        WindowDrag drag(fixture, {});
        QVERIFY(!drag.enter());
        QCOMPARE(drag.drop(), Qt::IgnoreAction);
        QVERIFY(!fixture.store->isAddingApplication());
    }

    void aDropThatIsNoApplicationIsTakenAndExplained()
    {
        WindowFixture fixture;
        WindowDrag drag(fixture, {u"/Users/someone/notes.txt"_s});
        QVERIFY(drag.enter());
        QCOMPARE(drag.drop(), Qt::CopyAction);
        fixture.settle();
        QCOMPARE(fixture.store->alertMessage(), u"Drop an application with the .app extension."_s);
    }

    void behindAnAlertDropsAreRefused()
    {
        WindowFixture fixture;
        addBundles(fixture);
        fixture.raiseAlert();
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(!drag.enter());
        QCOMPARE(drag.drop(), Qt::IgnoreAction);
    }

    void aDragThatWasOverItWhenAnAlertCameIsRefusedAtTheDrop()
    {
        WindowFixture fixture;
        addBundles(fixture);
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(drag.enter());
        QVERIFY(fixture.store->isDropTargeted());
        fixture.raiseAlert();
        QVERIFY(!fixture.store->isDropTargeted());
        QTRY_COMPARE(fixture.item(u"dropZone"_s)->scale(), 1.0);
        QVERIFY(!drag.move());
        QCOMPARE(drag.drop(), Qt::IgnoreAction);
        fixture.settle();
        QVERIFY(fixture.store->applications().isEmpty());
    }

    void aDragThatWaitsForAnAlertToGoIsAcceptedThen()
    {
        WindowFixture fixture;
        addBundles(fixture);
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(drag.enter());
        fixture.raiseAlert();
        fixture.store->dismissAlert();
        QVERIFY(drag.move());
        QVERIFY(fixture.store->isDropTargeted());
        QCOMPARE(drag.drop(), Qt::CopyAction);
    }

    void behindTheGuideDropsAreRefused()
    {
        const WindowFixture fixture({}, true);
        WindowDrag drag(fixture, {firstPath});
        QVERIFY(!drag.enter());
        QVERIFY(!fixture.store->isDropTargeted());
        QCOMPARE(drag.drop(), Qt::IgnoreAction);
    }
};

QTEST_MAIN(TestDrops)
#include "tst_drops.moc"
