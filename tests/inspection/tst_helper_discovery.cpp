#include "inspection/helper_candidates.h"
#include "tests/inspection/made_up_system.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::inspection;
using namespace zorvane::tests;
using platform::ItemKind;
using records::CodeIdentity;

class TestHelperDiscovery : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MadeUpSystem> m_system;

private Q_SLOTS:
    void init() { m_system = std::make_unique<MadeUpSystem>(); }

    void nestedBundlesAreFoundByTheirExtension_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<bool>("isFolder");
        QTest::addColumn<bool>("counts");
        const auto row = [](const char *item, bool isFolder, bool counts) {
            QTest::newRow(item) << QString::fromUtf8(item) << isFolder << counts;
        };
        row("Contents/Frameworks/Helper.app", true, true);
        row("Contents/Frameworks/F.framework/Versions/A/Helper.APP", true, true);
        row("Contents/XPCServices/S.xpc", true, true);
        row("Contents/PlugIns/E.appex", true, true);
        row("Contents/Library/SystemExtensions/x.y.systemextension", true, true);
        row("Contents/Resources/S.XPC", true, true);
        row("Contents/Frameworks/F.framework", true, false);
        row("Contents/PlugIns/P.bundle", true, false);
        row("Contents/Helpers/app", true, false);
        row("Contents/Helpers/.app", true, false);
        row("Contents/Helpers/Tool.app", false, false);
        row("Contents/Helpers/Tool", true, false);
    }

    void nestedBundlesAreFoundByTheirExtension()
    {
        QFETCH(QString, item);
        QFETCH(bool, isFolder);
        QFETCH(bool, counts);
        const std::string path = "/x/Tool.app/" + item.toStdString();
        m_system->walk.items.emplace_back(
            path, isFolder ? ItemKind::Directory : ItemKind::RegularFile);
        m_system->sign(QString::fromStdString(path), u"inner"_s);
        const auto found
            = m_system->inspector().discoverAuxiliaryIdentities("/x/Tool.app", {u"main"_s, team});
        QCOMPARE(found.size(), counts ? 1 : 0);
    }

    void aLinkNamedLikeABundleIsNone()
    {
        m_system->walk.items.emplace_back("/x/Tool.app/Y.app", ItemKind::Other);
        m_system->sign(u"/x/Tool.app/Y.app"_s, u"inner"_s);
        QVERIFY(m_system->inspector()
                    .discoverAuxiliaryIdentities("/x/Tool.app", {u"main"_s, std::nullopt})
                    .isEmpty());
    }

    void helpersOfTheMainIdentityLeaveAnEmptyListPresent()
    {
        m_system->addApplication(u"/x/Tool.app"_s);
        m_system->addNested("/x/Tool.app/Contents/Helpers/H.app", u"com.example.Tool"_s, team);
        const auto record = recordOf(m_system->inspect(u"/x/Tool.app"_s));
        QVERIFY(record->auxiliaryCodeIdentities);
        QVERIFY(record->auxiliaryCodeIdentities->isEmpty());
    }

    void theMainIdentifierWithoutItsTeamIsAnotherIdentity()
    {
        m_system->addApplication(u"/x/Tool.app"_s);
        m_system->addNested("/x/Tool.app/Contents/Helpers/H.app", u"com.example.Tool"_s);
        const QList<CodeIdentity> expected{{u"com.example.Tool"_s, std::nullopt}};
        QCOMPARE(recordOf(m_system->inspect(u"/x/Tool.app"_s))->auxiliaryCodeIdentities, expected);
    }

    void sameIdentifiersOfDifferentTeamsAreBothKeptOrderedByTeam()
    {
        m_system->addApplication(u"/x/Tool.app"_s);
        m_system->addNested("/x/Tool.app/a.xpc", u"helper"_s, u"ZZZ"_s);
        m_system->addNested("/x/Tool.app/b.xpc", u"helper"_s, u"AAA"_s);
        m_system->addNested("/x/Tool.app/c.xpc", u"helper"_s);
        m_system->addNested("/x/Tool.app/d.xpc", u"Helper"_s, u"ZZZ"_s);
        m_system->addNested("/x/Tool.app/e.xpc", u"helper"_s, u"AAA"_s);
        const QList<CodeIdentity> expected{{u"Helper"_s, u"ZZZ"_s}, {u"helper"_s, std::nullopt},
            {u"helper"_s, u"AAA"_s}, {u"helper"_s, u"ZZZ"_s}};
        QCOMPARE(recordOf(m_system->inspect(u"/x/Tool.app"_s))->auxiliaryCodeIdentities, expected);
    }

    void helpersAreOrderedByCodePoint()
    {
        m_system->addApplication(u"/x/Tool.app"_s);
        m_system->addNested("/x/Tool.app/a.xpc", u"\uFFFD"_s);
        m_system->addNested("/x/Tool.app/b.xpc", u"\U0001F600"_s);
        const QList<CodeIdentity> expected{
            {u"\uFFFD"_s, std::nullopt}, {u"\U0001F600"_s, std::nullopt}};
        QCOMPARE(recordOf(m_system->inspect(u"/x/Tool.app"_s))->auxiliaryCodeIdentities, expected);
    }

    void unsignedNestedBundlesAreLeftOut()
    {
        m_system->addApplication(u"/x/Tool.app"_s);
        m_system->walk.items.emplace_back("/x/Tool.app/a.xpc", ItemKind::Directory);
        QVERIFY(recordOf(m_system->inspect(u"/x/Tool.app"_s))->auxiliaryCodeIdentities->isEmpty());
    }

    void helperDirectoriesAreTheSevenInOrder()
    {
        const std::vector<std::string_view> expected{"/Contents/MacOS/", "/Contents/Helpers/",
            "/Contents/XPCServices/", "/Contents/Library/LoginItems/",
            "/Contents/Library/LaunchAgents/", "/Contents/Library/LaunchDaemons/",
            "/Contents/Library/LaunchServices/"};
        QVERIFY(std::ranges::equal(embeddedHelperDirectories, expected));
    }
};

QTEST_APPLESS_MAIN(TestHelperDiscovery)
#include "tst_helper_discovery.moc"
