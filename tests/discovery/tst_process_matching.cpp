#include "app/sample_applications.h"
#include "inspection/process_matching.h"
#include "plain_rule.h"
#include "sample_processes.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using namespace zorvane::inspection;
using records::BlockedApplication;

namespace
{

DiscoveredNetworkProcess processAt(const QString &path)
{
    auto process = sampleProcess(u"unknown"_s, std::nullopt);
    process.executablePath = path;
    return process;
}

/** Random records from few values, so that many of them meet. */
class Generator
{
public:
    explicit Generator(quint32 seed)
        : m_random(seed)
    {
    }

    BlockedApplication application()
    {
        auto application = sampleApplication(text({u"A"_s, u"B"_s, u"C"_s}), identifier(), team());
        QList<records::CodeIdentity> auxiliary;
        for (int i = 0; i < m_random.bounded(4); ++i)
            auxiliary.append({identifier(), team()});
        if (m_random.bounded(5) > 0)
            application.auxiliaryCodeIdentities = auxiliary;
        else
            application.auxiliaryCodeIdentities.reset();
        application.path = path();
        return application;
    }

    DiscoveredNetworkProcess process()
    {
        auto process = sampleProcess(identifier(), team());
        if (m_random.bounded(2) == 0)
            process.sourceApplicationIdentifier = identifier();
        process.sourceApplicationTeamIdentifier = team();
        if (m_random.bounded(3) > 0)
            process.executablePath
                = path() + text({QString(), u"/Contents/MacOS/x"_s, u"/.."_s, u"X"_s});
        return process;
    }

private:
    QString text(const QStringList &choices)
    {
        return choices.at(m_random.bounded(int(choices.size())));
    }
    QString identifier() { return text({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s}); }
    std::optional<QString> team()
    {
        const QString team = text({QString(), u" "_s, u"T"_s, u" T"_s, u"U"_s});
        return team.isEmpty() ? std::nullopt : std::optional(team);
    }
    QString path()
    {
        return text({u"/"_s, u"/A.app"_s, u"/x/A.app"_s, u"/x//A.app"_s, u"/x/./B.app/"_s,
            u"/x/y/../B.app"_s, u"/x/B.app/In.app"_s, u"/../A.app"_s});
    }

    QRandomGenerator m_random;
};

} // namespace

class TestProcessMatching : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aProcessInsideTheBundleBelongs()
    {
        const auto application = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        QVERIFY(
            processBelongs(processAt(application.path + u"/Contents/MacOS/Tool"_s), application));
        QVERIFY(processBelongs(processAt(application.path), application));
    }

    void aPathThatOnlyBeginsAlikeDoesNot()
    {
        const auto application = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        QVERIFY(!processBelongs(processAt(application.path + u"Extra/Tool"_s), application));
    }

    void aPathThatLeavesTheBundleByDotsDoesNot()
    {
        const auto application = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        QVERIFY(!processBelongs(processAt(application.path + u"/../Other.app/x"_s), application));
        QVERIFY(processBelongs(processAt(u"/x/.."_s + application.path + u"/x"_s), application));
    }

    void ownIdentityBelongs()
    {
        const auto application = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        QVERIFY(processBelongs(sampleProcess(u"com.example.Tool"_s, u" TEAM\n"_s), application));
        QVERIFY(!processBelongs(sampleProcess(u"com.example.Tool"_s, std::nullopt), application));
        QVERIFY(!processBelongs(sampleProcess(u"com.example.Tool"_s, u"OTHER"_s), application));
    }

    void auxiliaryIdentityBelongs()
    {
        auto application = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        application.auxiliaryCodeIdentities = {{u"helper"_s, std::nullopt}};
        QVERIFY(processBelongs(sampleProcess(u"helper"_s, std::nullopt), application));
        QVERIFY(!processBelongs(sampleProcess(u"helper"_s), application));
    }

    void aSourceApplicationWithoutTeamMatchesOnlyAnIdentityWithoutTeam()
    {
        auto process = sampleProcess(u"curl"_s);
        process.sourceApplicationIdentifier = u"com.example.Tool"_s;
        QVERIFY(!processBelongs(process, sampleApplication(u"Tool"_s, u"com.example.Tool"_s)));
        QVERIFY(processBelongs(
            process, sampleApplication(u"Tool"_s, u"com.example.Tool"_s, std::nullopt)));
    }

    void aSourceTeamWithoutSourceApplicationIsNothing()
    {
        auto process = sampleProcess(u"curl"_s);
        process.sourceApplicationTeamIdentifier = u"TEAM"_s;
        QVERIFY(!processBelongs(process, sampleApplication(u"Tool"_s, u"com.example.Tool"_s)));
    }

    void aProcessOfAMovedBundleIsKnownByItsIdentityOnly()
    {
        auto application = sampleApplication(u"Tool"_s, u"com.example.Tool"_s);
        application.path = u"/Applications/New/Tool.app"_s;
        auto process = processAt(u"/Applications/Old/Tool.app/Contents/MacOS/Tool"_s);
        QVERIFY(!processBelongs(process, application));
        process.signingIdentifier = u"com.example.Tool"_s;
        process.teamIdentifier = u"TEAM"_s;
        QVERIFY(processBelongs(process, application));
    }

    void aSharedHelperBelongsToBothApplications()
    {
        auto a = sampleApplication(u"A"_s, u"a"_s);
        auto b = sampleApplication(u"B"_s, u"b"_s);
        a.auxiliaryCodeIdentities = b.auxiliaryCodeIdentities = {{u"helper"_s, u"TEAM"_s}};
        const ProcessIndex index({a, sampleApplication(u"C"_s, u"c"_s), b});
        QCOMPARE(index.owners(sampleProcess(u"helper"_s)), QList<qsizetype>({0, 2}));
    }

    void theIndexAndTheMatcherAnswerAsThePlainRuleDoes()
    {
        for (quint32 seed = 1; seed <= 200; ++seed) {
            Generator generate(seed);
            QList<BlockedApplication> applications;
            for (int i = 0; i < 12; ++i)
                applications.append(generate.application());
            const ProcessIndex index(applications);
            for (int i = 0; i < 25; ++i) {
                const auto process = generate.process();
                QList<qsizetype> expected;
                for (qsizetype a = 0; a < applications.size(); ++a) {
                    const BlockedApplication &application = applications.at(a);
                    const bool belongs = belongsByThePlainRule(
                        process, records::allCodeIdentities(application), application.path);
                    if (belongs)
                        expected.append(a);
                    QCOMPARE(processBelongs(process, application), belongs);
                }
                QVERIFY2(index.owners(process) == expected, qPrintable(u"seed %1"_s.arg(seed)));
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestProcessMatching)
#include "tst_process_matching.moc"
