#include "ui/measures.h"
#include "ui/samples.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const auto whole = partOf(named(u"alertBox"_s), u"box"_s);

/** A window whose only application is to be added again. */
struct Twice : WindowFixture {
    explicit Twice(const QString &name)
        : WindowFixture({sample(name)})
    {
        store->add(store->applications().first());
        settle();
    }
};

} // namespace

class TestAlert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAlertShowsTheMessageUnderTheProductsName()
    {
        WindowFixture fixture;
        QCOMPARE(fixture.button(u"OK"_s), nullptr);
        fixture.raiseAlert();
        const auto message = fixture.store->alertMessage();
        QVERIFY(message.has_value());
        QVERIFY(fixture.text(*message) != nullptr);
        const auto titles = fixture.items([](const QQuickItem *item) {
            return item->inherits("QQuickText") && item->property("text") == u"Zorvane"_s;
        });
        // The menu bar's, the header's and its own.
        QCOMPARE(titles.size(), 3);
        QCOMPARE(titles.last()->property("font").value<QFont>().weight(), QFont::Bold);
    }

    void presentingAnAlertChangesNothing()
    {
        WindowFixture fixture;
        fixture.raiseAlert();
        const auto message = fixture.store->alertMessage();
        QVERIFY(message.has_value());
        fixture.platform.preferences.written.clear();
        QTRY_COMPARE(fixture.item(u"alertBox"_s)->opacity(), 1.0);
        fixture.settle();
        QCOMPARE(fixture.store->alertMessage(), message);
        QVERIFY(fixture.platform.preferences.written.isEmpty());
    }

    void itsButtonDismissesIt()
    {
        WindowFixture fixture;
        fixture.raiseAlert();
        QTRY_COMPARE(fixture.item(u"alertBox"_s)->opacity(), 1.0);
        fixture.click(fixture.button(u"OK"_s));
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
        QTRY_COMPARE(fixture.button(u"OK"_s), nullptr);
    }

    void keysDismissIt_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Escape") << Qt::Key_Escape;
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void keysDismissIt()
    {
        QFETCH(Qt::Key, key);
        WindowFixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        fixture.raiseAlert();
        QTest::keyClick(fixture.window(), key);
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
    }

    void nothingBehindAnAlertCanBeUsed()
    {
        WindowFixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        auto *const toggle = fixture.item(u"protectionSwitch"_s);
        fixture.raiseAlert();
        fixture.click(toggle);
        QVERIFY(QMetaObject::invokeMethod(toggle, "press"));
        for (int times = 0; times < 5; ++times) {
            QTest::keyClick(fixture.window(), Qt::Key_Tab);
            QVERIFY(!toggle->hasActiveFocus());
        }
        fixture.settle();
        QVERIFY(fixture.platform.systemExtensions.submitted.isEmpty());
        QTest::keyClick(fixture.window(), Qt::Key_Space);
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
        QTRY_VERIFY(toggle->isEnabled());
    }

    void theFocusReturnsToWhereItWas()
    {
        WindowFixture fixture;
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        auto *const toggle = fixture.item(u"protectionSwitch"_s);
        toggle->forceActiveFocus(Qt::TabFocusReason);
        fixture.raiseAlert();
        QVERIFY(!toggle->hasActiveFocus());
        QTest::keyClick(fixture.window(), Qt::Key_Escape);
        QTRY_VERIFY(toggle->hasActiveFocus());
    }

    void overTheGuideItIsDismissedFirst()
    {
        WindowFixture fixture({}, true);
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        const auto page = [&] { return accessibleName(fixture.item(u"onboarding"_s)); };
        QCOMPARE(page(), u"Welcome to Zorvane"_s);
        fixture.raiseAlert();
        QTest::keyClick(fixture.window(), Qt::Key_Return);
        QCOMPARE(fixture.store->alertMessage(), std::nullopt);
        QTRY_COMPARE(fixture.item(u"alertBox"_s), nullptr);
        QCOMPARE(page(), u"Welcome to Zorvane"_s);
        QTest::keyClick(fixture.window(), Qt::Key_Return);
        QCOMPARE(page(), u"Turn On Protection"_s);
    }

    void aLongMessageWrapsAndTheAlertGrows()
    {
        const Twice brief(u"Atlas"_s);
        const Twice fixture(u"A Rather Long Name "_s.repeated(8).trimmed());
        QTRY_COMPARE(fixture.item(u"alertBox"_s)->opacity(), 1.0);
        QVERIFY(whole(fixture)->height() > whole(brief)->height() + 30);
        const auto *const message = fixture.item(u"alertMessage"_s);
        QCOMPARE(message->property("text"), fixture.store->alertMessage());
        QVERIFY(!message->property("truncated").toBool());
        QVERIFY(inWindow(whole(fixture)).contains(inWindow(message)));
    }

    void ofAnEndlessMessageTheButtonStaysInTheWindow()
    {
        const Twice fixture(QString(5000, u'W'));
        fixture.window()->resize(fixture.window()->minimumSize());
        const auto *const layer = fixture.item(u"alertBox"_s);
        QTRY_COMPARE(layer->opacity(), 1.0);
        QTRY_COMPARE(fixture.window()->contentItem()->width(), 680.0);
        QVERIFY(inWindow(layer).contains(inWindow(whole(fixture))));
        QVERIFY(inWindow(whole(fixture)).contains(inWindow(fixture.button(u"OK"_s))));
        QVERIFY2(whole(fixture)->height() < 520 - 2 * 20, "it would not fit in the settings");
        auto *const told = QAccessible::queryAccessibleInterface(fixture.item(u"alertBox"_s));
        QCOMPARE(told->text(QAccessible::Description), *fixture.store->alertMessage());
    }

    void whatIsSaidOfAnEndlessNameCanBeRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("shown");
        const auto closing = u" is already on the list."_s;
        const QString ordinary(276, u'W');
        QTest::newRow("as long as is shown whole") << ordinary << ordinary + closing;
        QTest::newRow("wide letters")
            << QString(5000, u'W') << QString(200, u'W') + u"…"_s + QString(75, u'W') + closing;
        // Of two code units each, which belong together.
        const auto face = u"\U0001F600"_s;
        QTest::newRow("pictures") << u"A"_s + face.repeated(3000)
                                  << u"A"_s + face.repeated(99) + u"…"_s + face.repeated(37)
                + closing;
        QTest::newRow("many lines") << u"A\n\r"_s.repeated(40) << u"A "_s.repeated(40) + closing;
        QTest::newRow("a few lines") << u"A\nB"_s << u"A\nB"_s + closing;
    }

    void whatIsSaidOfAnEndlessNameCanBeRead()
    {
        QFETCH(QString, name);
        QFETCH(QString, shown);
        const Twice fixture(name);
        const auto *const message = fixture.item(u"alertMessage"_s);
        QCOMPARE(message->property("text").toString(), shown);
        QVERIFY(!message->property("truncated").toBool());
        QCOMPARE(accessibleName(message), *fixture.store->alertMessage());
    }

    void aMessageThatFollowsAnotherIsShown()
    {
        WindowFixture fixture;
        fixture.raiseAlert();
        fixture.requireInstallation();
        fixture.store->explainProtectionUnavailable();
        QVERIFY(fixture.text(*fixture.store->alertMessage()) != nullptr);
    }
};

QTEST_MAIN(TestAlert)
#include "tst_alert.moc"
