#include "ui/measures.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

/** A window after a check for updates. */
struct Fixture : WindowFixture {
    explicit Fixture(const QString &version, const QString &notes = {}) { check(version, notes); }

    void check(const QString &version, const QString &notes = {})
    {
        publish(version, notes);
        store->checkForUpdates(false);
        settle();
    }

    [[nodiscard]] zorvane::updates::UpdateController &updates() const
    {
        return *store->updateController();
    }

    [[nodiscard]] bool waitForPanel() const { return waitUntilGrown(u"updatePanel"_s); }
};

} // namespace

class TestUpdatePanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsOfferedWithoutANewerRelease()
    {
        const Fixture fixture(u"0.1"_s);
        QCOMPARE(fixture.item(u"updatePanel"_s), nullptr);
        QCOMPARE(fixture.button(u"Download Update"_s), nullptr);
    }

    void aNewerReleaseIsOffered()
    {
        const Fixture fixture(u"1.3"_s, u"Faster & <b>calmer</b>."_s);
        QVERIFY(fixture.waitForPanel());
        const auto *const title = fixture.text(u"Zorvane 1.3 is available"_s);
        QVERIFY(title != nullptr);
        QCOMPARE(accessibleRole(title), QAccessible::Heading);
        const auto *const notes = fixture.text(u"Faster & <b>calmer</b>."_s);
        QVERIFY(notes != nullptr);
        QCOMPARE(notes->property("textFormat").toInt(), int(Qt::PlainText));
        const auto *const dismiss = fixture.button(u"Remind me next time"_s);
        QCOMPARE(dismiss->property("symbol").toString(), u"xmark"_s);
        QCOMPARE(accessibleName(dismiss), u"Remind me next time"_s);
    }

    void aReleaseWithoutNotesHasAStandardSentence()
    {
        const Fixture fixture(u"1.3"_s);
        QVERIFY(fixture.waitForPanel());
        QVERIFY(fixture.text(u"A new version is ready to download."_s) != nullptr);
    }

    void longTextsWrapAndThePanelGrows()
    {
        const Fixture brief(u"1.3"_s);
        QVERIFY(brief.waitForPanel());
        const auto notes = u"Many words. "_s.repeated(40);
        const Fixture fixture(u"1.3."_s + QString(80, u'9'), notes);
        QVERIFY(fixture.waitForPanel());
        const auto find = named(u"updateBox"_s);
        const auto panel = inWindow(find(fixture));
        QVERIFY(panel.height() > find(brief)->height() + 30);
        QVERIFY(panel.contains(inWindow(fixture.text(notes))));
        QVERIFY(panel.contains(inWindow(fixture.button(u"Download Update"_s))));
        QCOMPARE(panel.right(), 740.0);
    }

    void itsButtonOpensTheDownload()
    {
        const Fixture fixture(u"1.3"_s);
        QVERIFY(fixture.waitForPanel());
        fixture.click(fixture.button(u"Download Update"_s));
        QCOMPARE(fixture.platform.actions.calls, QStringList{u"url https://kestrelworks.dev/d"_s});
        QVERIFY(fixture.updates().isBannerVisible());
    }

    void hidingItKeepsTheUpdate()
    {
        const Fixture fixture(u"1.3"_s);
        QVERIFY(fixture.waitForPanel());
        fixture.click(fixture.button(u"Remind me next time"_s));
        QVERIFY(!fixture.updates().isBannerVisible());
        QVERIFY(fixture.updates().availableUpdate());
        QTRY_COMPARE(fixture.item(u"updatePanel"_s), nullptr);
        QVERIFY(fixture.platform.actions.calls.isEmpty());
    }

    void theNextCheckShowsItAgain()
    {
        Fixture fixture(u"1.3"_s);
        fixture.updates().setBannerVisible(false);
        QTRY_COMPARE(fixture.item(u"updatePanel"_s), nullptr);
        fixture.check(u"01.40"_s);
        QVERIFY(fixture.waitForPanel());
        QVERIFY2(fixture.text(u"Zorvane 01.40 is available"_s) != nullptr, "as it is written");
    }

    void aReleaseThatIsTakenBackIsToldOfUntilThePanelIsGone()
    {
        Fixture fixture(u"1.3"_s);
        QVERIFY(fixture.waitForPanel());
        fixture.check(u"0.1"_s);
        QVERIFY(!fixture.updates().availableUpdate());
        QVERIFY(fixture.text(u"Zorvane 1.3 is available"_s) != nullptr);
        QTRY_COMPARE(fixture.item(u"updatePanel"_s), nullptr);
    }
};

QTEST_MAIN(TestUpdatePanel)
#include "tst_update_panel.moc"
