#include "app/sample_applications.h"
#include "inspection/network_components.h"
#include "sample_processes.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using namespace zorvane::inspection;
using Component = ApplicationNetworkComponent;
using Kind = Component::Kind;

namespace
{

records::BlockedApplication atlas()
{
    auto application = sampleApplication(u"Atlas Notes"_s, u"org.atlasnotes.desktop"_s);
    application.auxiliaryCodeIdentities
        = {{u"org.atlasnotes.helper"_s, u"TEAM"_s}, {u"org.atlasnotes.sync"_s, u"TEAM"_s}};
    return application;
}

Component sample()
{
    return {u"id"_s, u"name"_s, u"com.example.tool"_s, u"TEAM"_s, u"/path"_s, Kind::Observed, 1.0};
}

QStringList lines(const QList<Component> &components)
{
    QStringList result;
    for (const Component &component : components)
        result.append(component.name + u" / "_s + label(component.kind));
    return result;
}

} // namespace

class TestNetworkComponents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }

    void inspectedItemsAreShownWithoutAnyProcess()
    {
        QCOMPARE(lines(networkComponents(atlas(), {})),
            QStringList({u"Atlas Notes / Main app"_s, u"org.atlasnotes.helper / Bundled"_s,
                u"org.atlasnotes.sync / Bundled"_s}));
    }

    void anObservedHelperIsNotListedAgainAsBundled()
    {
        auto helper = sampleProcess(u"org.atlasnotes.helper"_s);
        helper.executablePath = u"/Applications/Atlas Notes.app/Contents/MacOS/Helper"_s;
        QCOMPARE(lines(networkComponents(atlas(), {helper})),
            QStringList({u"Atlas Notes / Main app"_s, u"Helper / Observed"_s,
                u"org.atlasnotes.sync / Bundled"_s}));
    }

    void blanksAroundAnObservedTeamMakeItNoOtherIdentity()
    {
        const auto helper = sampleProcess(u"org.atlasnotes.helper"_s, u" TEAM\n"_s);
        QCOMPARE(lines(networkComponents(atlas(), {helper})),
            QStringList({u"Atlas Notes / Main app"_s, u"org.atlasnotes.helper / Observed"_s,
                u"org.atlasnotes.sync / Bundled"_s}));
    }

    void anObservedMainProcessReplacesTheInspectedOne()
    {
        auto main = sampleProcess(u"org.atlasnotes.desktop"_s);
        main.executablePath = u"/Applications/Atlas Notes.app/Contents/MacOS/AtlasNotes"_s;
        QCOMPARE(
            lines(networkComponents(atlas(), {main})).constFirst(), u"AtlasNotes / Main app"_s);
        QCOMPARE(networkComponents(atlas(), {main}).size(), 3);
    }

    void aProcessWithTheMainIdentifierOfAnotherTeamIsMainByItsIdentifier()
    {
        auto process = sampleProcess(u"org.atlasnotes.desktop"_s, u"OTHER"_s);
        process.executablePath = u"/Applications/Atlas Notes.app/Contents/MacOS/x"_s;
        QCOMPARE(lines(networkComponents(atlas(), {process})),
            QStringList({u"Atlas Notes / Main app"_s, u"x / Main app"_s,
                u"org.atlasnotes.helper / Bundled"_s, u"org.atlasnotes.sync / Bundled"_s}));
    }

    void mainItemsComeFirstAndTheOthersAreMixedByName()
    {
        auto process = sampleProcess(u"com.other"_s);
        process.executablePath = u"/Applications/Atlas Notes.app/Contents/org.atlasnotes.middle"_s;
        QCOMPARE(lines(networkComponents(atlas(), {process})),
            QStringList({u"Atlas Notes / Main app"_s, u"org.atlasnotes.helper / Bundled"_s,
                u"org.atlasnotes.middle / Observed"_s, u"org.atlasnotes.sync / Bundled"_s}));
    }

    void aProcessWithoutPathIsNamedByItsIdentifier_data()
    {
        QTest::addColumn<bool>("hasPath");
        QTest::newRow("empty path") << true;
        QTest::newRow("absent path") << false;
    }

    void aProcessWithoutPathIsNamedByItsIdentifier()
    {
        QFETCH(bool, hasPath);
        auto process = sampleProcess(u"org.atlasnotes.helper"_s);
        if (hasPath)
            process.executablePath = QString();
        QCOMPARE(networkComponents(atlas(), {process}).at(1).name, u"org.atlasnotes.helper"_s);
    }

    void observedIdsJoinFiveFieldsSourceFirst()
    {
        auto process = sampleProcess(u"helper"_s, u"TEAM"_s);
        process.sourceApplicationIdentifier = u"org.atlasnotes.desktop"_s;
        process.sourceApplicationTeamIdentifier = u"TEAM"_s;
        process.executablePath = u"/usr/bin/helper"_s;
        const auto components = networkComponents(atlas(), {process});
        QCOMPARE(components.at(1).id, u"TEAM|org.atlasnotes.desktop|TEAM|helper|/usr/bin/helper"_s);
        QCOMPARE(components.at(1).lastSeenAt, process.lastSeenAt);
    }

    void absentFieldsAreEmptyInTheId()
    {
        auto application = atlas();
        application.auxiliaryCodeIdentities = {{u"bare"_s, std::nullopt}};
        const auto components
            = networkComponents(application, {sampleProcess(u"bare"_s, std::nullopt)});
        QCOMPARE(components.at(1).id, u"|||bare|"_s);
    }

    void inspectedIdsCarryTheIdentityKeyAlsoForTheMainItem()
    {
        const auto components = networkComponents(atlas(), {});
        QCOMPARE(components.constFirst().id,
            u"bundled|"_s + records::identityKey({u"org.atlasnotes.desktop"_s, u"TEAM"_s}));
        QVERIFY(!components.constFirst().executablePath);
        QVERIFY(!components.constFirst().lastSeenAt);
    }

    void aBlankTeamOfTheRecordCountsAsAbsent()
    {
        const auto application = sampleApplication(u"Tool"_s, u"tool"_s, u"  "_s);
        const auto components = networkComponents(application, {});
        QCOMPARE(components.size(), 1);
        QCOMPARE(components.constFirst().kind, Kind::Main);
        QCOMPARE(components.constFirst().id, u"bundled|.dG9vbA=="_s);
    }

    void aMainIdentityStoredWithBlanksAroundItsTeamIsNotBundled()
    {
        auto application = sampleApplication(u"Tool"_s, u"com.x"_s, u"T"_s);
        application.auxiliaryCodeIdentities = {{u"com.x"_s, u" T "_s}};
        QCOMPARE(lines(networkComponents(application, {})),
            QStringList({u"Tool / Main app"_s, u"Tool / Main app"_s}));
    }

    void namesAreOrderedAsPeopleOrderThem()
    {
        auto application = atlas();
        application.auxiliaryCodeIdentities
            = {{u"beta"_s, u"TEAM"_s}, {u"Zeta"_s, u"TEAM"_s}, {u"Alpha"_s, u"TEAM"_s}};
        QCOMPARE(lines(networkComponents(application, {})),
            QStringList({u"Atlas Notes / Main app"_s, u"Alpha / Bundled"_s, u"beta / Bundled"_s,
                u"Zeta / Bundled"_s}));
    }

    void kindsHaveTheLabelsThatTheUserSees()
    {
        for (const Kind kind : {Kind::Main, Kind::Bundled, Kind::Observed})
            QCOMPARE(kindFromLabel(label(kind)), kind);
        QCOMPARE(label(Kind::Main), u"Main app"_s);
        QCOMPARE(label(Kind::Bundled), u"Bundled"_s);
        QCOMPARE(label(Kind::Observed), u"Observed"_s);
        QVERIFY(!kindFromLabel(u"main app"_s));
    }

    void everyFieldCountsForEqualityAndHash_data()
    {
        QTest::addColumn<Component>("other");
        const auto row = [](const char *name, const auto &change) {
            Component other = sample();
            change(other);
            QTest::newRow(name) << other;
        };
        row("id", [](Component &other) { other.id = u"x"_s; });
        row("name", [](Component &other) { other.name = u"x"_s; });
        row("signing identifier", [](Component &other) { other.signingIdentifier = u"x"_s; });
        row("team", [](Component &other) { other.teamIdentifier = u"x"_s; });
        row("no team", [](Component &other) { other.teamIdentifier.reset(); });
        row("path", [](Component &other) { other.executablePath = u"x"_s; });
        row("no path", [](Component &other) { other.executablePath.reset(); });
        row("kind", [](Component &other) { other.kind = Kind::Bundled; });
        row("last seen", [](Component &other) { other.lastSeenAt = 2; });
        row("never seen", [](Component &other) { other.lastSeenAt.reset(); });
    }

    void everyFieldCountsForEqualityAndHash()
    {
        QFETCH(Component, other);
        QVERIFY(other != sample());
        QVERIFY(qHash(other, 1) != qHash(sample(), 1));
        QCOMPARE(qHash(sample(), 1), qHash(sample(), 1));
    }

    void processesOfOthersAreNotShown()
    {
        QCOMPARE(networkComponents(atlas(), {sampleProcess(u"stranger"_s)}).size(), 3);
    }
};

QTEST_APPLESS_MAIN(TestNetworkComponents)
#include "tst_network_components.moc"
