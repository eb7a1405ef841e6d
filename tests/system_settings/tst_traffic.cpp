#include "app/records/code_identity.h"
#include "inspection/discovered_processes.h"
#include "platform/state_folder.h"
#include "tools/system_settings/filter_extension.h"
#include "tools/system_settings/settings_window.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tools;
using inspection::DiscoveredNetworkProcess;
using platform::simulated::FilterConfiguration;
using zorvane::tests::StateFolder;

namespace
{

const QString toolKey = records::identityKey({u"com.example.tool"_s, u"TEAM"_s});

QJsonObject configuration(bool enabled)
{
    const QJsonObject vendor{
        {u"blockedCodeIdentities"_s, QJsonArray{toolKey}},
        {u"blockedApplicationPaths"_s, QJsonArray{u"/Applications/Alpha.app"_s}},
    };
    return {{u"isEnabled"_s, enabled},
        {u"providerConfiguration"_s, QJsonObject{{u"vendorConfiguration"_s, vendor}}}};
}

DiscoveredNetworkProcess process(const QString &identifier, const std::optional<QString> &team)
{
    DiscoveredNetworkProcess process;
    process.signingIdentifier = identifier;
    process.teamIdentifier = team;
    process.firstSeenAt = process.lastSeenAt = 800'000'000;
    process.connectionCount = 1;
    return process;
}

Verdict verdictOf(const DiscoveredNetworkProcess &process, bool enabled = true)
{
    return verdict(FilterConfiguration(configuration(enabled)), process);
}

} // namespace

class TestTraffic : public QObject
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

    void aListedIdentityIsBlockedByItsKey()
    {
        const Verdict verdict = verdictOf(process(u"com.example.tool"_s, u" TEAM\n"_s));
        QVERIFY(verdict.blocked);
        QCOMPARE(verdict.reason, u"Blocked by the identity "_s + toolKey);
    }

    void theSameIdentifierOfAnotherTeamIsAllowed()
    {
        QVERIFY(!verdictOf(process(u"com.example.tool"_s, u"OTHER"_s)).blocked);
        QVERIFY(!verdictOf(process(u"com.example.tool"_s, std::nullopt)).blocked);
    }

    void codeThatWorksForAListedIdentityIsBlockedByThatKey()
    {
        auto helper = process(u"curl"_s, std::nullopt);
        helper.sourceApplicationIdentifier = u"com.example.tool"_s;
        helper.sourceApplicationTeamIdentifier = u"TEAM"_s;
        const Verdict verdict = verdictOf(helper);
        QVERIFY(verdict.blocked);
        QVERIFY(verdict.reason.endsWith(toolKey));
    }

    void anExecutableInAListedApplicationIsBlockedByItsPath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("blocked");
        QTest::newRow("inside") << u"/Applications/Alpha.app/Contents/MacOS/x"_s << true;
        QTest::newRow("the bundle itself") << u"/Applications/Alpha.app"_s << true;
        QTest::newRow("begins alike") << u"/Applications/Alpha.appExtra/x"_s << false;
        QTest::newRow("leaves by dots") << u"/Applications/Alpha.app/../x"_s << false;
    }

    void anExecutableInAListedApplicationIsBlockedByItsPath()
    {
        QFETCH(QString, path);
        auto unlisted = process(u"x"_s, std::nullopt);
        unlisted.executablePath = path;
        QTEST(verdictOf(unlisted).blocked, "blocked");
        if (verdictOf(unlisted).blocked)
            QCOMPARE(verdictOf(unlisted).reason, u"Blocked by the path /Applications/Alpha.app"_s);
    }

    void everythingIsAllowedWhileTheFilterIsOff()
    {
        const auto tool = process(u"com.example.tool"_s, u"TEAM"_s);
        QCOMPARE(verdictOf(tool, false).reason, u"Allowed: the filter is off."_s);
        QVERIFY(!verdict(FilterConfiguration(), tool).blocked);
    }

    void theSameProcessIsCountedAnotherOneIsAppended()
    {
        auto tool = process(u"com.example.tool"_s, u"TEAM"_s);
        auto again = tool;
        again.lastSeenAt = again.firstSeenAt = tool.lastSeenAt + 100;
        auto elsewhere = tool;
        elsewhere.executablePath = u"/tmp/tool"_s;
        auto records = withConnection({}, tool);
        records = withConnection(records, again);
        records = withConnection(records, elsewhere);
        QCOMPARE(records.size(), 2);
        QCOMPARE(records[0].connectionCount, 2);
        QCOMPARE(records[0].firstSeenAt, tool.firstSeenAt);
        QCOMPARE(records[0].lastSeenAt, again.lastSeenAt);
        QCOMPARE(records[1], elsewhere);
    }

    void aConnectionIsRecordedWhereTheApplicationReadsIt()
    {
        open();
        type(u"signingIdentifier"_s, u"com.example.new"_s);
        type(u"teamIdentifier"_s, u"TEAM"_s);
        type(u"executablePath"_s, u"/tmp/new"_s);
        QVERIFY(recorded().isEmpty());
        click(u"connect"_s);
        click(u"connect"_s);
        const auto records = recorded();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records[0].signingIdentifier, u"com.example.new"_s);
        QCOMPARE(records[0].teamIdentifier, u"TEAM"_s);
        QCOMPARE(records[0].executablePath, u"/tmp/new"_s);
        QVERIFY(!records[0].sourceApplicationIdentifier);
        QCOMPARE(records[0].connectionCount, 2);
        QVERIFY(text(u"trafficNote"_s).startsWith(u"Recorded"_s));
    }

    void codeThatWorksForAListedApplicationIsBlockedAndRecordedWithIt()
    {
        configure(true);
        open();
        type(u"signingIdentifier"_s, u"curl"_s);
        type(u"teamIdentifier"_s, u"OTHER"_s);
        type(u"sourceIdentifier"_s, u"com.example.tool"_s);
        // It is the application's team that counts, and the listed one has a team.
        QVERIFY(text(u"verdict"_s).startsWith(u"Allowed"_s));
        type(u"sourceTeamIdentifier"_s, u"TEAM"_s);
        QVERIFY(text(u"verdict"_s).startsWith(u"Blocked"_s));
        QVERIFY(text(u"verdict"_s).endsWith(toolKey));
        click(u"connect"_s);
        const auto records = recorded();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records[0].signingIdentifier, u"curl"_s);
        QCOMPARE(records[0].teamIdentifier, u"OTHER"_s);
        QCOMPARE(records[0].sourceApplicationIdentifier, u"com.example.tool"_s);
        QCOMPARE(records[0].sourceApplicationTeamIdentifier, u"TEAM"_s);
    }

    void recordsThatCannotBeReadAreBegunAnew()
    {
        {
            platform::simulated::FilePreferencesSuites suites(m_folder->system());
            const auto suite = suites.open(u"group.dev.kestrelworks.Zorvane"_s);
            suite->setData(inspection::discoveredProcessesKey, "[{\"half");
            suite->synchronize();
        }
        open();
        type(u"signingIdentifier"_s, u"com.example.new"_s);
        click(u"connect"_s);
        QCOMPARE(recorded().size(), 1);
    }

    void withoutAnApplicationGroupItSaysSo()
    {
        m_folder->behave("{'applicationGroups': null}");
        open();
        type(u"signingIdentifier"_s, u"com.example.new"_s);
        click(u"connect"_s);
        QVERIFY(text(u"trafficNote"_s).contains(u"no application group"_s));
        QVERIFY(!m_folder->hasFile(u"preferences"_s));
    }

    void withoutAnIdentifierThereIsNothingToConnect()
    {
        open();
        QVERIFY(!item(u"connect"_s)->isEnabled());
        QCOMPARE(text(u"verdict"_s), QString());
        type(u"signingIdentifier"_s, u"x"_s);
        QVERIFY(item(u"connect"_s)->isEnabled());
    }

    void whatIsListedCanBeChosenAndIsBlocked()
    {
        configure(true);
        open();
        click(u"chooseNext"_s);
        QCOMPARE(text(u"signingIdentifier"_s), u"com.example.tool"_s);
        QCOMPARE(text(u"teamIdentifier"_s), u"TEAM"_s);
        QCOMPARE(text(u"verdict"_s), u"Blocked by the identity "_s + toolKey);
        click(u"chooseNext"_s);
        QCOMPARE(text(u"executablePath"_s), u"/Applications/Alpha.app/Contents/MacOS/unlisted"_s);
        QCOMPARE(text(u"verdict"_s), u"Blocked by the path /Applications/Alpha.app"_s);
        click(u"chooseNext"_s);
        QCOMPARE(text(u"signingIdentifier"_s), u"com.example.tool"_s);
        QCOMPARE(text(u"executablePath"_s), QString());
    }

    void theVerdictFollowsTheConfiguration()
    {
        configure(true);
        open();
        click(u"chooseNext"_s);
        QVERIFY(text(u"verdict"_s).startsWith(u"Blocked"_s));
        configure(false);
        QTRY_COMPARE(text(u"verdict"_s), u"Allowed: the filter is off."_s);
    }

    void withNothingListedThereIsNothingToChoose()
    {
        open();
        QVERIFY(!item(u"chooseNext"_s)->isEnabled());
    }

private:
    void configure(bool enabled) const
    {
        m_folder->write(u"filter-configuration.json"_s,
            QJsonDocument(configuration(enabled)).toJson(QJsonDocument::Compact));
    }

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

    [[nodiscard]] QString text(const QString &name) const
    {
        return item(name)->property("text").toString();
    }

    void click(const QString &name) const
    {
        const QQuickItem *const target = item(name);
        QTest::mouseClick(m_settings->window(), Qt::LeftButton, {},
            target->mapToScene(target->boundingRect().center()).toPoint());
    }

    void type(const QString &field, const QString &words) const
    {
        click(field + u"Input"_s);
        for (const QChar character : words)
            QTest::keyClick(m_settings->window(), character.toLatin1());
    }

    /** The stored records as the application would read them. */
    [[nodiscard]] QList<DiscoveredNetworkProcess> recorded() const
    {
        platform::simulated::SimulatedEntitlements entitlements(m_folder->system());
        platform::simulated::FilePreferencesSuites suites(m_folder->system());
        return inspection::DiscoveredProcesses({entitlements, suites})
            .loadDiscoveredProcesses(QDateTime::currentDateTimeUtc());
    }

    std::unique_ptr<StateFolder> m_folder;
    std::unique_ptr<SettingsWindow> m_settings;
};

QTEST_MAIN(TestTraffic)
#include "tst_traffic.moc"
