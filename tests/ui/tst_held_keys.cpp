#include "ui/samples.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

struct Fixture : WindowFixture {
    explicit Fixture(bool firstLaunch = false)
        : WindowFixture({sample(u"Alpha"_s), sample(u"Beta"_s), sample(u"Gamma"_s)}, firstLaunch)
    {
        if (!QTest::qWaitForWindowActive(window()))
            qFatal("the main window is not active");
    }

    void tabTo(const QString &name) const
    {
        for (int presses = 0; presses < 30 && here() != name; ++presses)
            QTest::keyClick(window(), Qt::Key_Tab);
        QCOMPARE(here(), name);
    }

    [[nodiscard]] QString here() const { return accessibleName(window()->activeFocusItem()); }

    void press(Qt::Key key) const { QTest::keyPress(window(), key); }

    /** As a key that is held down does, until it is released. */
    void repeat(Qt::Key key) const
    {
        for (int times = 0; times < 5; ++times) {
            QKeyEvent event(QEvent::KeyPress, key, {}, QString(), true);
            QCoreApplication::sendEvent(window(), &event);
        }
    }

    void hold(Qt::Key key) const
    {
        press(key);
        repeat(key);
        QTest::keyRelease(window(), key);
    }

    [[nodiscard]] QStringList applications() const
    {
        QStringList names;
        for (const auto &application : store->applications())
            names << application.name;
        return names;
    }
};

} // namespace

/** A key that is held down does what it does once. */
class TestHeldKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRemoveButtonRemovesOneApplication()
    {
        const Fixture fixture;
        fixture.tabTo(u"Remove from list"_s);
        fixture.hold(Qt::Key_Space);
        QCOMPARE(fixture.applications(), (QStringList{u"Beta"_s, u"Gamma"_s}));
    }

    void aButtonThatIsStillThereIsPressedOnce()
    {
        const Fixture fixture;
        fixture.tabTo(u"1 network process"_s);
        fixture.hold(Qt::Key_Space);
        const auto unfolded = fixture.items(
            [](const QQuickItem *item) { return item->property("isShowingComponents").toBool(); });
        QCOMPARE(unfolded.size(), 1);
    }

    void deleteRemovesOneApplication()
    {
        const Fixture fixture;
        fixture.tabTo(u"Alpha"_s);
        fixture.hold(Qt::Key_Delete);
        QCOMPARE(fixture.applications(), (QStringList{u"Beta"_s, u"Gamma"_s}));
    }

    void anAlertThatComesWhileReturnIsHeldStays()
    {
        Fixture fixture;
        fixture.raiseAlert();
        fixture.repeat(Qt::Key_Return);
        QVERIFY(fixture.store->alertMessage().has_value());
        fixture.hold(Qt::Key_Return);
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
    }

    void returnAdvancesTheGuideByOnePage()
    {
        const Fixture fixture(true);
        const auto page = [&] { return accessibleName(fixture.item(u"onboarding"_s)); };
        QCOMPARE(page(), u"Welcome to Zorvane"_s);
        fixture.hold(Qt::Key_Return);
        QCOMPARE(page(), u"Turn On Protection"_s);
    }

    void continueAdvancesTheGuideByOnePage()
    {
        const Fixture fixture(true);
        fixture.tabTo(u"Continue"_s);
        fixture.hold(Qt::Key_Space);
        QCOMPARE(accessibleName(fixture.item(u"onboarding"_s)), u"Turn On Protection"_s);
    }
};

QTEST_MAIN(TestHeldKeys)
#include "tst_held_keys.moc"
