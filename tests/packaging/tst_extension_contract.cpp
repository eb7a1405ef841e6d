#include "inspection/discovered_network_process.h"
#include "tests/filter/controller_fixture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using inspection::DiscoveredNetworkProcess;

namespace
{

/** The example of this name in the description of what is agreed with the filter extension. */
QByteArray example(const QByteArray &name)
{
    QFile file(QStringLiteral(ZORVANE_CONTRACT));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = file.readAll();
    const QByteArray opening = "```json " + name + '\n';
    const qsizetype start = text.indexOf(opening);
    if (start < 0)
        return {};
    const qsizetype from = start + opening.size();
    return text.mid(from, text.indexOf("```", from) - from);
}

} // namespace

/** What is written down for the makers of the filter extension is what the program does. */
class TestExtensionContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRulesAreWrittenAsTheExampleShows()
    {
        tests::ControllerFixture fixture;
        fixture.controller->requestActivation(
            {records::identityKey({u"com.example.Tool"_s, u"ABCDE12345"_s}),
                records::identityKey({u"com.example.Tool.Helper"_s, std::nullopt})},
            {u"/Applications/Tool.app"_s});
        fixture.finishActivation();

        QVERIFY(fixture.manager.stored.provider);
        QJsonObject written;
        for (const auto &[key, values] : fixture.manager.stored.provider->vendorConfiguration)
            written.insert(key, QJsonArray::fromStringList(values));
        QCOMPARE(written, QJsonDocument::fromJson(example("vendorConfiguration")).object());
    }

    void theRecordsOfTheExampleAreRead()
    {
        const auto read = inspection::decodedProcesses(example("discoveredNetworkProcesses.v2"));
        QVERIFY(read);
        const DiscoveredNetworkProcess helper{
            .signingIdentifier = u"com.example.Tool.Helper"_s,
            .teamIdentifier = u"ABCDE12345"_s,
            .sourceApplicationIdentifier = u"com.example.Tool"_s,
            .sourceApplicationTeamIdentifier = u"ABCDE12345"_s,
            .executablePath = u"/Applications/Tool.app/Contents/Helpers/Tool Helper"_s,
            .firstSeenAt = 785412000,
            .lastSeenAt = 785498400.25,
            .connectionCount = 42,
        };
        const DiscoveredNetworkProcess daemon{
            .signingIdentifier = u"com.example.Daemon"_s,
            .teamIdentifier = {},
            .sourceApplicationIdentifier = {},
            .sourceApplicationTeamIdentifier = {},
            .executablePath = {},
            .firstSeenAt = 785412000,
            .lastSeenAt = 785412000,
            .connectionCount = 1,
        };
        const QList<DiscoveredNetworkProcess> expected{helper, daemon};
        QCOMPARE(*read, expected);
    }
};

QTEST_GUILESS_MAIN(TestExtensionContract)
#include "tst_extension_contract.moc"
