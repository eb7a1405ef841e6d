#include "platform/state_folder.h"
#include "tools/system_settings/settings_window.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace zorvane::tools;
using zorvane::tests::StateFolder;

namespace
{

constexpr char granted[] = "This system allows every extension without asking.";
constexpr char denied[] = "This system refuses every extension";

} // namespace

class TestSystemSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // The offscreen platform says that it keeps no window sizes; that is no fault of ours.
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_folder = std::make_unique<StateFolder>();
    }
    void cleanup() { m_settings.reset(); }

    void itSaysPlainlyThatNothingIsBlocked()
    {
        open();
        QCOMPARE(text(u"nothingBlocked"_s), u"Nothing is blocked on this system."_s);
        QVERIFY(text(u"folder"_s).startsWith(m_folder->filePath(QString())));
    }

    void allowingIsStoredAndShown()
    {
        m_folder->behave("{'approval': 'ask'}");
        open();
        QCOMPARE(text(u"extensionState"_s), u"Not allowed"_s);
        click(u"allow"_s);
        QCOMPARE(storedState(), (QJsonObject{{u"approved"_s, true}, {u"active"_s, false}}));
        QCOMPARE(text(u"extensionState"_s), u"Allowed"_s);
    }

    void blockingTakesTheExtensionOutOfUse()
    {
        m_folder->write(u"extension.json"_s, "{\"approved\": true, \"active\": true}");
        open();
        QCOMPARE(text(u"extensionState"_s), u"Allowed and active"_s);
        click(u"block"_s);
        QCOMPARE(storedState(), (QJsonObject{{u"approved"_s, false}, {u"active"_s, false}}));
        QCOMPARE(text(u"extensionState"_s), u"Not allowed"_s);
    }

    void onlyTheDecisionThatChangesSomethingCanBeTaken()
    {
        open();
        QVERIFY(item(u"allow"_s)->isEnabled());
        QVERIFY(!item(u"block"_s)->isEnabled());
        click(u"block"_s);
        QVERIFY(!m_folder->hasFile(u"extension.json"_s));
        click(u"allow"_s);
        QVERIFY(!item(u"allow"_s)->isEnabled());
        QVERIFY(item(u"block"_s)->isEnabled());
    }

    void theDecisionCanBeTakenByKeyboard()
    {
        open();
        QTest::keyClick(m_settings->window(), Qt::Key_Tab);
        QVERIFY(item(u"allow"_s)->hasActiveFocus());
        QTest::keyClick(m_settings->window(), Qt::Key_Space);
        QVERIFY(storedState().value(u"approved"_s).toBool());
    }

    void whatOtherProgramsDoIsShownWhileTheWindowIsOpen()
    {
        open();
        QCOMPARE(text(u"filterState"_s), u"Not configured"_s);
        m_folder->write(u"filter-configuration.json"_s,
            "{\"isEnabled\": true, \"providerConfiguration\": {\"vendorConfiguration\": "
            "{\"blockedCodeIdentities\": [\"a.b\", \"c.d\", \"e.f\"], "
            "\"blockedApplicationPaths\": [\"/Applications/A.app\"]}}}");
        QTRY_COMPARE(text(u"filterState"_s), u"On"_s);
        QCOMPARE(text(u"identityCount"_s), u"3"_s);
        QCOMPARE(text(u"applicationCount"_s), u"1"_s);

        m_folder->write(u"filter-configuration.json"_s,
            "{\"isEnabled\": false, \"providerConfiguration\": {}}");
        QTRY_COMPARE(text(u"filterState"_s), u"Off"_s);
        QCOMPARE(text(u"identityCount"_s), u"0"_s);

        m_folder->write(u"extension.json"_s, "{\"approved\": true, \"active\": true}");
        QTRY_COMPARE(text(u"extensionState"_s), u"Allowed and active"_s);
    }

    void itSaysWhereTheDecisionIsNotTheUsers()
    {
        open();
        QVERIFY(text(u"approvalNote"_s).startsWith(QLatin1StringView(granted)));
        m_folder->behave("{'approval': 'denied'}");
        QTRY_VERIFY(text(u"approvalNote"_s).startsWith(QLatin1StringView(denied)));
        m_folder->behave("{'approval': 'ask'}");
        QTRY_VERIFY(!item(u"approvalNote"_s)->isVisible());
    }

    void aDamagedFileIsReportedOnceAndReadAsAbsent()
    {
        m_folder->write(u"extension.json"_s, "{\"approved\": tr");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"holds no JSON object"_s));
        open();
        QCOMPARE(text(u"extensionState"_s), u"Not allowed"_s);
        // Other changes are seen, so it was looked at again, and nothing more was said of it.
        m_folder->write(
            u"filter-configuration.json"_s, "{\"isEnabled\": true, \"providerConfiguration\": {}}");
        QTRY_COMPARE(text(u"filterState"_s), u"On"_s);
        m_folder->write(u"filter-configuration.json"_s,
            "{\"isEnabled\": false, \"providerConfiguration\": {}}");
        QTRY_COMPARE(text(u"filterState"_s), u"Off"_s);
        QCOMPARE(m_folder->read(u"extension.json"_s), "{\"approved\": tr");
    }

    void aDecisionThatCannotBeStoredIsSaidInTheWindow()
    {
        QVERIFY(QDir().mkdir(m_folder->filePath(u"extension.json"_s)));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot be read"_s));
        open();
        click(u"allow"_s);
        QCOMPARE(text(u"error"_s), u"This could not be stored: it is not a regular file."_s);
        QCOMPARE(text(u"extensionState"_s), u"Not allowed"_s);
    }

private:
    void open()
    {
        m_settings = std::make_unique<SettingsWindow>(m_folder->path());
        QVERIFY(m_settings->window());
        m_settings->window()->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_settings->window()));
        m_settings->window()->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_settings->window()));
    }

    [[nodiscard]] QQuickItem *item(const QString &name) const
    {
        auto *const found = m_settings->window()->findChild<QQuickItem *>(name);
        if (found == nullptr)
            qFatal("there is no item %s", qPrintable(name));
        return found;
    }

    /** What an item shows: a label's text, a line's value. */
    [[nodiscard]] QString text(const QString &name) const
    {
        const QVariant value = item(name)->property("value");
        return (value.isValid() ? value : item(name)->property("text")).toString();
    }

    void click(const QString &name) const
    {
        const QQuickItem *const target = item(name);
        QTest::mouseClick(m_settings->window(), Qt::LeftButton, {},
            target->mapToScene(target->boundingRect().center()).toPoint());
    }

    [[nodiscard]] QJsonObject storedState() const
    {
        return QJsonDocument::fromJson(m_folder->read(u"extension.json"_s)).object();
    }

    std::unique_ptr<StateFolder> m_folder;
    std::unique_ptr<SettingsWindow> m_settings;
};

QTEST_MAIN(TestSystemSettings)
#include "tst_system_settings.moc"
