#include "ui/samples.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const QList<SampleApplication> two{atlas, quill};

QList<QQuickItem *> named(const WindowFixture &fixture, QAccessible::Role role)
{
    return fixture.items([&](const QQuickItem *item) { return accessibleRole(item) == role; });
}

QString description(QQuickItem *item)
{
    return QAccessible::queryAccessibleInterface(item)->text(QAccessible::Description);
}

/** The names of everything of this role that assistive technology finds from here. */
void collectNames(const QAccessibleInterface *told, QAccessible::Role role, QStringList &names)
{
    if (told->role() == role)
        names << told->text(QAccessible::Name);
    for (int at = 0; at < told->childCount(); ++at)
        collectNames(told->child(at), role, names);
}

} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingThatCanBePressedHasANameAndARole()
    {
        WindowFixture fixture(two);
        fixture.awaitApproval();
        QTRY_VERIFY(fixture.button(u"Retry Activation"_s) != nullptr);
        const auto pressable = fixture.items([](const QQuickItem *item) {
            return item->metaObject()->indexOfSignal("clicked()") >= 0;
        });
        QVERIFY(pressable.size() >= 5);
        for (const auto *const item : pressable) {
            QVERIFY2(!accessibleName(item).isEmpty(), item->metaObject()->className());
            const auto role = accessibleRole(item);
            QVERIFY(role == QAccessible::Button || role == QAccessible::CheckBox);
        }
    }

    void theSwitchIsACheckBoxThatTellsItsState()
    {
        WindowFixture fixture;
        auto *const toggle = fixture.item(u"protectionSwitch"_s);
        QCOMPARE(accessibleRole(toggle), QAccessible::CheckBox);
        auto *const told = QAccessible::queryAccessibleInterface(toggle);
        QVERIFY(told->state().checkable);
        QVERIFY(!told->state().checked);
        fixture.enable();
        QVERIFY(told->state().checked);
    }

    void theSwitchCanBeToggledByAnAction()
    {
        WindowFixture fixture;
        doAccessibleAction(
            fixture.item(u"protectionSwitch"_s), QAccessibleActionInterface::toggleAction());
        QCOMPARE(fixture.platform.systemExtensions.submitted.size(), 1);
    }

    void aDisabledSwitchCannotBeToggledByAnAction()
    {
        WindowFixture fixture;
        fixture.requireInstallation();
        auto *const toggle = fixture.item(u"protectionSwitch"_s);
        fixture.platform.preferences.written.clear();
        const auto lines = fixture.platform.log.lines;
        doAccessibleAction(toggle, QAccessibleActionInterface::toggleAction());
        doAccessibleAction(toggle, QAccessibleActionInterface::pressAction());
        fixture.settle();
        QVERIFY(!fixture.platform.preferences.written.contains(u"protectionRequested"_s));
        QCOMPARE(fixture.platform.log.lines, lines);
        QVERIFY(!toggle->property("checked").toBool());
    }

    void theLayerOverTheSwitchExplains()
    {
        WindowFixture fixture;
        fixture.requireInstallation();
        auto *const layer = fixture.item(u"explanationLayer"_s);
        QCOMPARE(accessibleName(layer), u"Explain why protection is unavailable"_s);
        doAccessibleAction(layer, QAccessibleActionInterface::pressAction());
        QVERIFY(fixture.store->alertMessage().has_value());
    }

    void aLayerThatDoesNotShowCannotBePressed()
    {
        const WindowFixture fixture;
        auto *const layer = fixture.window()->findChild<QQuickItem *>(u"explanationLayer"_s);
        QVERIFY(!layer->isVisible());
        const QSignalSpy clicks(layer, SIGNAL(clicked()));
        doAccessibleAction(layer, QAccessibleActionInterface::pressAction());
        QCOMPARE(clicks.size(), 0);
    }

    void theListAndItsRowsAreNamed()
    {
        const WindowFixture fixture(two);
        const auto lists = named(fixture, QAccessible::List);
        QCOMPARE(lists.size(), 1);
        QCOMPARE(accessibleName(lists.first()), u"Blocked apps"_s);
        const auto rows = named(fixture, QAccessible::ListItem);
        QCOMPARE(rows.size(), 2);
        QCOMPARE(accessibleName(rows[0]), u"Atlas"_s);
        QCOMPARE(accessibleName(rows[1]), u"Quill"_s);
    }

    void rowsOutOfSightAreTold()
    {
        const WindowFixture fixture(manySamples(40));
        QStringList names;
        collectNames(
            QAccessible::queryAccessibleInterface(fixture.window()), QAccessible::ListItem, names);
        QCOMPARE(names.size(), 40);
        QCOMPARE(names.first(), u"App 00"_s);
        QCOMPARE(names.last(), u"App 39"_s);
    }

    void aRowOutOfSightComesIntoViewWithItsButtonsWhenItIsGivenTheFocus()
    {
        WindowFixture fixture(manySamples(40));
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        auto *const last = named(fixture, QAccessible::ListItem).last();
        QVERIFY(fixture.text(u"App 39"_s) == nullptr);
        doAccessibleAction(last, QAccessibleActionInterface::setFocusAction());
        QVERIFY(last->hasActiveFocus());
        QVERIFY(fixture.text(u"App 39"_s) != nullptr);
        const auto removers = fixture.items([](const QQuickItem *item) {
            return item->property("toolTip") == u"Remove from list"_s;
        });
        QCOMPARE(description(removers.last()), u"App 39"_s);
        doAccessibleAction(removers.last(), QAccessibleActionInterface::pressAction());
        QCOMPARE(fixture.store->applications().size(), 39);
        QCOMPARE(fixture.store->applications().last().name, u"App 38"_s);
    }

    void theButtonsOfARowSayWhoseTheyAre()
    {
        const WindowFixture fixture(two);
        QCOMPARE(description(fixture.button(u"Remove from list"_s)), u"Atlas"_s);
        QCOMPARE(description(fixture.item(u"disclosure"_s)), u"Atlas"_s);
    }

    void aRowCanBeRemovedByAnAction()
    {
        WindowFixture fixture(two);
        doAccessibleAction(
            fixture.button(u"Remove from list"_s), QAccessibleActionInterface::pressAction());
        QCOMPARE(fixture.store->applications().size(), 1);
    }

    void theLinesOfAnUnfoldedRowAreAListOfTheirOwn()
    {
        WindowFixture fixture(two);
        QCOMPARE(named(fixture, QAccessible::List).size(), 1);
        auto *const disclosure = fixture.item(u"disclosure"_s);
        auto *const told = QAccessible::queryAccessibleInterface(disclosure);
        QVERIFY(told->state().checkable);
        QVERIFY(!told->state().checked);
        doAccessibleAction(disclosure, QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(named(fixture, QAccessible::List).size(), 2);
        QCOMPARE(accessibleName(named(fixture, QAccessible::List).last()), u"Network processes"_s);
        QVERIFY(told->state().checked);
    }

    void theGuideTellsItsPage()
    {
        WindowFixture fixture({}, true);
        QCOMPARE(accessibleName(named(fixture, QAccessible::Graphic).value(0)), u"Page 1 of 4"_s);
        doAccessibleAction(
            fixture.button(u"Continue"_s), QAccessibleActionInterface::pressAction());
        QCOMPARE(accessibleName(named(fixture, QAccessible::Graphic).value(0)), u"Page 2 of 4"_s);
    }

    void whatReturnPressesIsToldAsTheDefaultButton()
    {
        WindowFixture fixture({}, true);
        const auto isDefault = [&](const QString &label) {
            return bool(QAccessible::queryAccessibleInterface(fixture.button(label))
                            ->state()
                            .defaultButton);
        };
        QVERIFY(isDefault(u"Continue"_s));
        QVERIFY(!isDefault(u"Skip"_s));
        fixture.raiseAlert();
        QVERIFY(isDefault(u"OK"_s));
    }

    void anAlertIsToldAsOne()
    {
        WindowFixture fixture;
        fixture.raiseAlert();
        const auto alerts = named(fixture, QAccessible::AlertMessage);
        QCOMPARE(alerts.size(), 1);
        QCOMPARE(accessibleName(alerts.first()), u"Zorvane"_s);
        doAccessibleAction(fixture.button(u"OK"_s), QAccessibleActionInterface::pressAction());
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
    }
};

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
