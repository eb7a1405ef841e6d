#include "app/rule_lists.h"
#include "sample_applications.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using records::CodeIdentity;
using records::identityKey;

namespace
{

const auto ownIdentifier = std::optional(u"dev.kestrelworks.Zorvane"_s);

} // namespace

class TestRuleLists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void helpersUnderTheProductPrefixContributeNoKey()
    {
        auto application = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        application.auxiliaryCodeIdentities = {{u"dev.kestrelworks.Zorvane.Helper"_s, u"TEAM"_s},
            {u"dev.kestrelworks.ZorvaneHelper"_s, u"TEAM"_s}};
        QCOMPARE(app::blockedCodeIdentityKeys({application}, ownIdentifier),
            QStringList({identityKey({u"com.example.Tool"_s, u"TEAM"_s}),
                identityKey({u"dev.kestrelworks.ZorvaneHelper"_s, u"TEAM"_s})}));
    }

    void aSharedHelperStandsOnceAtTheFirstApplication()
    {
        const CodeIdentity helper{u"com.example.Helper"_s, u"TEAM"_s};
        auto first = sampleApplication(u"First"_s, u"com.example.First"_s);
        auto second = sampleApplication(u"Second"_s, u"com.example.Second"_s);
        first.auxiliaryCodeIdentities = {helper};
        second.auxiliaryCodeIdentities = {helper};
        QCOMPARE(app::blockedCodeIdentityKeys({first, second}, ownIdentifier),
            QStringList({identityKey({u"com.example.First"_s, u"TEAM"_s}), identityKey(helper),
                identityKey({u"com.example.Second"_s, u"TEAM"_s})}));
    }

    void aRecordWithoutTeamYieldsAKeyThatBeginsWithTheSeparator()
    {
        const auto application = sampleApplication(u"Tool"_s, u"com.example.Tool"_s, std::nullopt);
        QCOMPARE(app::blockedCodeIdentityKeys({application}, ownIdentifier),
            QStringList{u".Y29tLmV4YW1wbGUuVG9vbA=="_s});
    }

    void pathsAreNeitherSortedNorMadeUnique()
    {
        auto a = sampleApplication(u"B"_s, u"b"_s);
        auto b = sampleApplication(u"A"_s, u"a"_s);
        b.path = a.path = u"/Applications/./Same.app"_s;
        QCOMPARE(app::blockedApplicationPaths({a, b}),
            QStringList({u"/Applications/./Same.app"_s, u"/Applications/./Same.app"_s}));
    }
};

QTEST_APPLESS_MAIN(TestRuleLists)
#include "tst_rule_lists.moc"
