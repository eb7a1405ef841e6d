#include "ui/measures.h"
#include "ui/samples.h"

#include <functional>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

qreal unfoldedBy(const WindowFixture &fixture)
{
    return fixture.item(u"blockedApps"_s)->height() - 56;
}

const auto alertBox = partOf(named(u"alertBox"_s), u"box"_s);

/** What @p value is in each frame from @p act on, until @p done. */
QList<qreal> inEachFrame(const WindowFixture &fixture, const std::function<void()> &act,
    const std::function<qreal()> &value, const std::function<bool()> &done)
{
    QList<qreal> seen;
    act();
    const auto connection = QObject::connect(
        fixture.window(), &QQuickWindow::afterAnimating, [&] { seen << value(); });
    if (!QTest::qWaitFor(done))
        seen.clear();
    QObject::disconnect(connection);
    return seen;
}

} // namespace

/** Where the user wants less motion, things fade and do not move. */
class TestMotion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void usuallyARowUnfoldsLittleByLittle()
    {
        const WindowFixture fixture({atlas});
        fixture.click(fixture.item(u"disclosure"_s));
        QVERIFY(unfoldedBy(fixture) < 43);
        QTRY_COMPARE(unfoldedBy(fixture), 43.0);
    }

    void reducedARowUnfoldsAtOnce()
    {
        WindowFixture fixture({atlas});
        fixture.platform.motion.setReduced(true);
        fixture.click(fixture.item(u"disclosure"_s));
        QCOMPARE(unfoldedBy(fixture), 43.0);
    }

    void aWishOfBeforeTheStartIsFollowed()
    {
        FakePlatform platform;
        platform.motion.setReduced(true);
        zorvane::app::AppBlockStore store(platform.ports);
        const zorvane::ui::UserInterface interface(store, platform.ports);
        store.setDropTargeted(true);
        const auto *const zone = interface.window()->findChild<QQuickItem *>(u"dropZone"_s);
        QCOMPARE(zone->scale(), 1.01);
    }

    void aWishOfNoMoreIsFollowedToo()
    {
        WindowFixture fixture({atlas});
        fixture.platform.motion.setReduced(true);
        fixture.platform.motion.setReduced(false);
        fixture.store->setDropTargeted(true);
        QVERIFY(fixture.item(u"dropZone"_s)->scale() < 1.01);
        QTRY_COMPARE(fixture.item(u"dropZone"_s)->scale(), 1.01);
    }

    void reducedAPanelTakesItsPlaceAtOnceAndFadesIn()
    {
        WindowFixture fixture;
        fixture.platform.motion.setReduced(true);
        const auto *const panel = fixture.window()->findChild<QQuickItem *>(u"installationPanel"_s);
        const auto heights = inEachFrame(
            fixture, [&] { fixture.requireInstallation(); },
            [&] { return panel->isVisible() ? panel->height() : -1; },
            [&] { return panel->opacity() == 1; });
        QVERIFY(panel->height() > 100);
        QVERIFY(!heights.isEmpty());
        for (const auto height : heights)
            QVERIFY(height == -1 || height == panel->height());
    }

    void reducedAnAlertFadesInAtItsSize()
    {
        WindowFixture fixture;
        fixture.platform.motion.setReduced(true);
        const auto scales = inEachFrame(
            fixture, [&] { fixture.raiseAlert(); }, [&] { return alertBox(fixture)->scale(); },
            [&] { return fixture.item(u"alertBox"_s)->opacity() == 1; });
        QVERIFY(!scales.isEmpty());
        for (const auto scale : scales)
            QCOMPARE(scale, 1.0);
    }

    void reducedAPageOfTheGuideFadesInAtItsSize()
    {
        WindowFixture fixture({}, true);
        fixture.platform.motion.setReduced(true);
        QTRY_COMPARE(fixture.item(u"onboarding"_s)->opacity(), 1.0);
        const auto second = numbered(u"onboardingPage"_s, 1);
        const auto goOn = [&] {
            fixture.click(fixture.button(u"Continue"_s));
            QCOMPARE(numbered(u"pageMark"_s, 1)(fixture)->width(), 22.0);
        };
        const auto scales = inEachFrame(
            fixture, goOn,
            [&] { return second(fixture) == nullptr ? -1 : second(fixture)->scale(); },
            [&] { return fixture.text(u"Welcome to Zorvane"_s) == nullptr; });
        QVERIFY(scales.contains(1));
        for (const auto scale : scales)
            QVERIFY(scale == -1 || scale == 1);
    }

    void reducedTheKnobOfTheSwitchIsAtItsOtherEndAtOnce()
    {
        WindowFixture fixture;
        fixture.platform.motion.setReduced(true);
        const auto knob = partOf(named(u"protectionSwitch"_s), u"knob"_s);
        QCOMPARE(knob(fixture)->x(), 1.5);
        fixture.platform.filterManager.stored.enabled = true;
        fixture.store->refreshProtection();
        fixture.platform.scheduler.settle();
        QCOMPARE(knob(fixture)->x(), 38 - 19 - 1.5);
    }

    void usuallyAnAlertGrowsABit()
    {
        WindowFixture fixture;
        fixture.raiseAlert();
        QVERIFY(alertBox(fixture)->scale() < 1);
        QTRY_COMPARE(alertBox(fixture)->scale(), 1.0);
    }
};

QTEST_MAIN(TestMotion)
#include "tst_motion.moc"
