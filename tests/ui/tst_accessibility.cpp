#include "ui/window_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const QList<SampleApplication> two{
    {u"Atlas"_s, u"org.example.atlas"_s, u"7QK2M4X9TP"_s, std::nullopt},
    {u"Quill"_s, u"org.example.quill"_s, std::nullopt, std::nullopt}};

QList<QQuickItem *> named(const WindowFixture &fixture, QAccessible::Role role)
{
    return fixture.items([&](const QQuickItem *item) { return accessibleRole(item) == role; });
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
        doAccessibleAction(toggle, QAccessibleActionInterface::toggleAction());
        doAccessibleAction(toggle, QAccessibleActionInterface::pressAction());
        fixture.settle();
        QVERIFY(fixture.platform.systemExtensions.submitted.isEmpty());
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

    void aRowCanBeRemovedByAnAction()
    {
        WindowFixture fixture(two);
        doAccessibleAction(
            fixture.button(u"Remove from list"_s), QAccessibleActionInterface::pressAction());
        QCOMPARE(fixture.store->applications().size(), 1);
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
