#include "ui/window_fixture.h"

#include <QColor>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const auto firstPath = u"/Users/someone/First App.app"_s;
const auto secondPath = u"/Users/someone/Second.app"_s;

/** One drag from another program, as the window is told of it. */
class Drag
{
public:
    Drag(const WindowFixture &fixture, const QStringList &paths)
        : m_fixture(fixture)
        , m_place(centre(fixture))
    {
        QList<QUrl> urls;
        for (const auto &path : paths)
            urls.append(QUrl::fromLocalFile(path));
        m_data.setUrls(urls);
    }

    static QPoint centre(const WindowFixture &fixture)
    {
        const auto *const zone = fixture.item(u"dropZone"_s);
        return zone->mapToScene(QPointF(zone->width() / 2, zone->height() / 2)).toPoint();
    }

    void moveTo(const QPoint &place) { m_place = place; }

    /** As the system tells it: entering is followed by a first move. */
    bool enter()
    {
        QDragEnterEvent event(m_place, offered, &m_data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_fixture.window(), &event);
        return move();
    }

    bool move()
    {
        QDragMoveEvent event(m_place, offered, &m_data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_fixture.window(), &event);
        return event.isAccepted();
    }

    void leave()
    {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(m_fixture.window(), &event);
    }

    /** The action that was taken; IgnoreAction if the drop was refused. */
    Qt::DropAction drop()
    {
        QDropEvent event(m_place, offered, &m_data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_fixture.window(), &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }

private:
    static constexpr Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

    const WindowFixture &m_fixture;
    QPoint m_place;
    QMimeData m_data;
};

void addBundles(WindowFixture &fixture)
{
    fixture.platform.addBundle(firstPath, u"org.example.first"_s, u"ABCDE12345"_s, u"First"_s);
    fixture.platform.addBundle(secondPath, u"org.example.second"_s, u"ABCDE12345"_s, u"Second"_s);
}

} // namespace

class TestDropZone : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void waitingItInvites()
    {
        const WindowFixture fixture;
        const auto *const zone = fixture.item(u"dropZone"_s);
        QVERIFY(zone->height() >= 165);
        QCOMPARE(zone->scale(), 1.0);
        const auto *const fill = fixture.item(u"dropZoneFill"_s);
        QCOMPARE(fill->property("radius").toReal(), 20.0);
        QCOMPARE(
            fill->property("color").value<QColor>(), QColor::fromRgbF(0, 0x7a / 255.F, 1, 0.06F));
        const auto *const line = fixture.item(u"dropZoneDashes"_s);
        QCOMPARE(line->property("lineWidth").toReal(), 1.5);
        QCOMPARE(
            line->property("color").value<QColor>(), QColor::fromRgbF(0, 0x7a / 255.F, 1, 0.45F));
        QVERIFY(fixture.text(u"Drop an app here"_s) != nullptr);
        const auto *const invitation
            = fixture.text(u"Choose an app in Finder to block its new network connections."_s);
        QVERIFY(invitation != nullptr);
        QCOMPARE(invitation->property("color").value<QColor>(), QColor::fromRgbF(0, 0, 0, 0.60F));
    }

    void aDragOverItHighlightsIt()
    {
        WindowFixture fixture;
        Drag drag(fixture, {firstPath});
        QVERIFY(drag.enter());
        QVERIFY(fixture.store->isDropTargeted());
        auto *const zone = fixture.item(u"dropZone"_s);
        QTRY_COMPARE(zone->scale(), 1.01);
        QTRY_COMPARE(
            fixture.item(u"dropZoneFill"_s)->property("color").value<QColor>(), QColor(0x0068e1));
        const auto *const outline = fixture.item(u"dropZoneOutline"_s);
        auto *const border = qvariant_cast<QObject *>(outline->property("border"));
        QCOMPARE(border->property("width").toReal(), 1.5);
        QCOMPARE(border->property("color").value<QColor>(), QColor::fromRgbF(1, 1, 1, 0.65F));
        QTRY_COMPARE(
            fixture.item(u"dropZoneLine"_s)->property("color").value<QColor>(), QColor(Qt::white));
        drag.leave();
        QVERIFY(!fixture.store->isDropTargeted());
        QTRY_COMPARE(zone->scale(), 1.0);
    }

    void aDragBesideItIsRefused()
    {
        WindowFixture fixture;
        Drag drag(fixture, {firstPath});
        drag.moveTo({380, 20});
        QVERIFY(!drag.enter());
        QVERIFY(!fixture.store->isDropTargeted());
    }

    void aDropAddsTheApplicationByCopying()
    {
        WindowFixture fixture;
        addBundles(fixture);
        Drag drag(fixture, {firstPath});
        QVERIFY(drag.enter());
        QCOMPARE(drag.drop(), Qt::CopyAction);
        QVERIFY(!fixture.store->isDropTargeted());
        QVERIFY(fixture.store->isAddingApplication());
        fixture.settle();
        QCOMPARE(fixture.store->applications().size(), 1);
        QVERIFY(fixture.text(u"First"_s) != nullptr);
    }

    void whileAddingItSaysSo()
    {
        WindowFixture fixture;
        addBundles(fixture);
        QCOMPARE(fixture.item(u"spinner"_s), nullptr);
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        QVERIFY(fixture.text(u"Adding application"_s) != nullptr);
        QVERIFY(
            fixture.text(
                u"Discovering helpers and background processes without blocking the interface."_s)
            != nullptr);
        QCOMPARE(fixture.item(u"spinner"_s)->property("color").value<QColor>(), QColor(0x007aff));
        QCOMPARE(fixture.text(u"Drop an app here"_s), nullptr);
    }

    void aDropWhileAddingIsRefusedAndChangesNothing()
    {
        WindowFixture fixture;
        addBundles(fixture);
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        Drag drag(fixture, {secondPath});
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
        Drag drag(fixture, {secondPath});
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
        Drag drag(fixture, {secondPath});
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
        Drag drag(fixture, {firstPath, secondPath});
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
        Drag drag(fixture, {});
        QVERIFY(!drag.enter());
        QCOMPARE(drag.drop(), Qt::IgnoreAction);
        QVERIFY(!fixture.store->isAddingApplication());
    }

    void aDropThatIsNoApplicationIsTakenAndExplained()
    {
        WindowFixture fixture;
        Drag drag(fixture, {u"/Users/someone/notes.txt"_s});
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
        Drag drag(fixture, {firstPath});
        QVERIFY(!drag.enter());
        QCOMPARE(drag.drop(), Qt::IgnoreAction);
    }

    void itsNameForAssistiveTechnologyFollowsItsState()
    {
        WindowFixture fixture;
        addBundles(fixture);
        const auto *const zone = fixture.item(u"dropZone"_s);
        QCOMPARE(accessibleName(zone), u"Drop zone for an application"_s);
        fixture.store->addApplication(QUrl::fromLocalFile(firstPath));
        QCOMPARE(accessibleName(zone), u"Adding application"_s);
    }
};

QTEST_MAIN(TestDropZone)
#include "tst_drop_zone.moc"
