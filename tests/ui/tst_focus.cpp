#include "ui/samples.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const QList<SampleApplication> two{atlas, quill};

/** What has the keyboard, by its name for assistive technology. */
QString focused(const WindowFixture &fixture)
{
    return accessibleName(fixture.window()->activeFocusItem());
}

void focusButton(const WindowFixture &fixture, const QString &label)
{
    QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
    QTRY_VERIFY(fixture.button(label) != nullptr);
    fixture.button(label)->forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(focused(fixture), label);
}

} // namespace

/** Where the keyboard goes when what had it goes away. */
class TestFocus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ofAPanelThatGoesItGoesToWhatComesBeforeIt()
    {
        WindowFixture fixture(two);
        fixture.awaitApproval();
        focusButton(fixture, u"Retry Activation"_s);
        fixture.platform.systemExtensions.delegate()->requestDidFinish(
            zorvane::platform::ActivationResult::Completed);
        fixture.settle();
        QTRY_COMPARE(focused(fixture), u"Protection"_s);
        QTRY_COMPARE(fixture.item(u"approvalPanel"_s), nullptr);
    }

    void aPanelThatGoesWithoutItLeavesItAlone()
    {
        WindowFixture fixture(two);
        fixture.awaitApproval();
        QTRY_VERIFY(fixture.item(u"approvalPanel"_s) != nullptr);
        focusButton(fixture, u"Show getting started"_s);
        fixture.platform.systemExtensions.delegate()->requestDidFinish(
            zorvane::platform::ActivationResult::Completed);
        fixture.settle();
        QTRY_COMPARE(fixture.item(u"approvalPanel"_s), nullptr);
        QCOMPARE(focused(fixture), u"Show getting started"_s);
    }

    void ofARemovedRowItGoesToTheNextOne()
    {
        WindowFixture fixture(two);
        focusButton(fixture, u"Remove from list"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Space);
        QCOMPARE(fixture.store->applications().size(), 1);
        QCOMPARE(focused(fixture), u"Quill"_s);
    }

    void ofTheLastRowItGoesToWhatComesBeforeTheList()
    {
        WindowFixture fixture({two.first()});
        fixture.enable();
        focusButton(fixture, u"Remove from list"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Space);
        QVERIFY(fixture.store->applications().isEmpty());
        QCOMPARE(focused(fixture), u"Protection"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Backtab);
        QCOMPARE(focused(fixture), u"Show getting started"_s);
    }

    void ofARowThatIsRemovedByOtherMeansItGoesToTheNextOne()
    {
        WindowFixture fixture(two);
        focusButton(fixture, u"Remove from list"_s);
        fixture.store->remove(fixture.store->applications().first());
        QCOMPARE(focused(fixture), u"Quill"_s);
    }

    void aRowThatGoesWithoutItLeavesItAlone()
    {
        WindowFixture fixture(two);
        focusButton(fixture, u"Show getting started"_s);
        fixture.store->remove(fixture.store->applications().first());
        QCOMPARE(focused(fixture), u"Show getting started"_s);
    }

    void theSwitchHasItBackWhenItCanBeUsedAgain()
    {
        WindowFixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        auto *const toggle = fixture.item(u"protectionSwitch"_s);
        toggle->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(fixture.window(), Qt::Key_Space);
        QVERIFY(!toggle->isEnabled());
        fixture.platform.systemExtensions.delegate()->requestDidFinish(
            zorvane::platform::ActivationResult::Completed);
        fixture.settle();
        QVERIFY(toggle->isEnabled());
        QVERIFY(toggle->hasActiveFocus());
    }

    void ofTheLayerOverTheSwitchItGoesToTheSwitch()
    {
        WindowFixture fixture;
        const auto place = fixture.platform.mainBundle.path;
        fixture.requireInstallation();
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        auto *const layer = fixture.item(u"explanationLayer"_s);
        layer->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(layer->hasActiveFocus());
        fixture.platform.mainBundle.path = place;
        fixture.store->refreshProtection();
        fixture.settle();
        QVERIFY(fixture.item(u"protectionSwitch"_s)->hasActiveFocus());
        QTest::keyClick(fixture.window(), Qt::Key_Space);
        QCOMPARE(fixture.platform.systemExtensions.submitted.size(), 1);
    }

    void aFocusedRowThatIsScrolledAwayKeepsIt()
    {
        WindowFixture fixture(manySamples(40));
        focusButton(fixture, u"Remove from list"_s);
        auto *const area = fixture.item(u"page"_s);
        area->setProperty("contentY", area->property("contentHeight").toReal() - area->height());
        QTRY_VERIFY(fixture.text(u"App 39"_s) != nullptr);
        QTest::keyClick(fixture.window(), Qt::Key_Space);
        QCOMPARE(fixture.store->applications().first().name, u"App 01"_s);
        QCOMPARE(focused(fixture), u"App 01"_s);
    }

    void whatIsBehindTheGuideDoesNotTakeItFromThere()
    {
        WindowFixture fixture(two, true);
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        QCOMPARE(focused(fixture), u"Welcome to Zorvane"_s);
        for (const auto &label : {u"Show getting started"_s, u"Remove from list"_s}) {
            doAccessibleAction(fixture.button(label), QAccessibleActionInterface::setFocusAction());
            QTRY_COMPARE(focused(fixture), u"Welcome to Zorvane"_s);
        }
        QTest::keyClick(fixture.window(), Qt::Key_Escape);
        QTRY_COMPARE(fixture.item(u"onboarding"_s), nullptr);
    }
};

QTEST_MAIN(TestFocus)
#include "tst_focus.moc"
