#include "platform/simulated/filter_manager.h"
#include "platform/standard_scheduler.h"
#include "state_folder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <thread>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using namespace zorvane::platform::simulated;
using zorvane::tests::StateFolder;

namespace
{

const QString fileName = u"filter-configuration.json"_s;

const FilterProviderConfiguration rules{true, u"dev.kestrelworks.Zorvane.FilterExtension"_s,
    {{u"blockedCodeIdentities"_s, {u"QUJD.c2lnbg=="_s, u".c2lnbg=="_s}},
        {u"blockedSigningIdentifiers"_s, {}},
        {u"blockedApplicationPaths"_s, {u"/Applications/Ä.app"_s}}}};

/** An answer, and where it arrived. */
struct Answer {
    bool arrived = false;
    std::optional<PlatformError> error;
    std::thread::id thread;
};

} // namespace

class TestSimulatedFilterManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_folder = std::make_unique<StateFolder>();
        m_manager = std::make_unique<SimulatedFilterManager>(m_folder->system(), m_scheduler);
    }

    void withoutAFileTheFilterIsOff()
    {
        QCOMPARE(load(), std::nullopt);
        QVERIFY(!m_manager->isEnabled());
    }

    void theFileHasTheFormThatAFilterExtensionReads()
    {
        QCOMPARE(load(), std::nullopt);
        m_manager->setProviderConfiguration(rules);
        m_manager->setLocalizedDescription(u"Zorvane"_s);
        m_manager->setEnabled(true);
        QCOMPARE(save(), std::nullopt);

        const QJsonObject expected{{u"localizedDescription"_s, u"Zorvane"_s},
            {u"isEnabled"_s, true},
            {u"providerConfiguration"_s,
                QJsonObject{{u"filterSockets"_s, true},
                    {u"filterDataProviderBundleIdentifier"_s,
                        u"dev.kestrelworks.Zorvane.FilterExtension"_s},
                    {u"vendorConfiguration"_s,
                        QJsonObject{{u"blockedCodeIdentities"_s,
                                        QJsonArray{u"QUJD.c2lnbg=="_s, u".c2lnbg=="_s}},
                            {u"blockedSigningIdentifiers"_s, QJsonArray()},
                            {u"blockedApplicationPaths"_s,
                                QJsonArray{u"/Applications/Ä.app"_s}}}}}}};
        QCOMPARE(stored(), expected);
    }

    void theFileSaysThatTheFilterIsOffAlsoIfNobodySwitchedIt()
    {
        QCOMPARE(load(), std::nullopt);
        m_manager->setProviderConfiguration(rules);
        QCOMPARE(save(), std::nullopt);
        QCOMPARE(stored().value(u"isEnabled"_s), QJsonValue(false));
    }

    void aSaveThatDoesNotSwitchKeepsWhatIsStored_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }

    void aSaveThatDoesNotSwitchKeepsWhatIsStored()
    {
        QFETCH(bool, enabled);
        m_folder->write(fileName, enabled ? "{\"isEnabled\": true}" : "{\"isEnabled\": false}");
        QCOMPARE(load(), std::nullopt);
        QCOMPARE(m_manager->isEnabled(), enabled);
        m_manager->setProviderConfiguration(rules);
        QCOMPARE(save(), std::nullopt);
        QCOMPARE(stored().value(u"isEnabled"_s), QJsonValue(enabled));
    }

    void settingsThatThisProgramDoesNotKnowAreKept()
    {
        m_folder->write(fileName,
            "{\"grade\": 1, \"providerConfiguration\": {\"filterPackets\": false, \"n\": "
            "9007199254740993, \"deep\": [1, {\"a\": null}], \"vendorConfiguration\": {\"old\": "
            "[\"x\"]}}}");
        QCOMPARE(load(), std::nullopt);
        m_manager->setProviderConfiguration(rules);
        QCOMPARE(save(), std::nullopt);

        const QJsonObject provider = stored().value(u"providerConfiguration"_s).toObject();
        QCOMPARE(stored().value(u"grade"_s), QJsonValue(1));
        QCOMPARE(provider.value(u"filterPackets"_s), QJsonValue(false));
        QCOMPARE(provider.value(u"n"_s).toInteger(), 9007199254740993);
        QCOMPARE(provider.value(u"deep"_s),
            QJsonValue(QJsonArray{1, QJsonObject{{u"a"_s, QJsonValue()}}}));
        QVERIFY(provider.value(u"filterSockets"_s).toBool());
        // The vendor's part is this program's own and is replaced whole.
        QCOMPARE(provider.value(u"vendorConfiguration"_s).toObject().size(), 3);
    }

    void anAnswerComesLaterAndFromAnotherThread()
    {
        Answer answer;
        m_manager->load(answerInto(answer));
        QTest::qSleep(200); // the main thread is busy: the call has not returned to its loop
        QVERIFY(!hasArrived(answer));
        QTRY_VERIFY(hasArrived(answer));
        QVERIFY(answer.thread != std::this_thread::get_id());
    }

    void callsAreDoneAndAnsweredInOrder()
    {
        QCOMPARE(load(), std::nullopt);
        std::vector<int> order;
        m_manager->setProviderConfiguration(rules);
        m_manager->setEnabled(true);
        m_manager->save([&order](const auto &) { order.push_back(1); });
        m_manager->setEnabled(false);
        m_manager->load([&order](const auto &) { order.push_back(2); });
        Answer answer;
        m_manager->save(answerInto(answer));
        QTRY_VERIFY(hasArrived(answer));
        QCOMPARE(order, (std::vector{1, 2}));
        // What is saved is the copy at the time of the call.
        QVERIFY(m_manager->isEnabled());
        QCOMPARE(stored().value(u"isEnabled"_s), QJsonValue(false));
    }

    void faultsAreAnsweredAsTheSystemSays()
    {
        m_folder->behave("{'faults': [{'operation': 'save', 'domain': 'NEFilterErrorDomain', "
                         "'code': 5, 'description': 'permission denied', 'times': 2}]}");
        QCOMPARE(load(), std::nullopt);
        m_manager->setProviderConfiguration(rules);
        const PlatformError denied{u"NEFilterErrorDomain"_s, 5, u"permission denied"_s};
        QCOMPARE(save(), denied);
        QVERIFY(!m_folder->hasFile(fileName));
        QCOMPARE(save(), denied);
        QCOMPARE(save(), std::nullopt);
        QVERIFY(m_folder->hasFile(fileName));
    }

    void aLoadThatFailsLeavesTheCopyAsItWas()
    {
        m_folder->write(fileName, "{\"isEnabled\": true}");
        QCOMPARE(load(), std::nullopt);
        m_folder->write(fileName, "{\"isEnabled\": false}");
        m_folder->behave("{'faults': [{'operation': 'load'}]}");
        QVERIFY(load().has_value());
        QVERIFY(m_manager->isEnabled());
        m_folder->behave("{}");
        QCOMPARE(load(), std::nullopt);
        QVERIFY(!m_manager->isEnabled());
    }

    void withoutAProviderNothingCanBeSaved()
    {
        QCOMPARE(load(), std::nullopt);
        m_manager->setEnabled(true);
        QCOMPARE(save().value().code, 1);
        QVERIFY(!m_folder->hasFile(fileName));
    }

    void aDamagedFileReadsAsAbsentAndIsKeptAside()
    {
        m_folder->write(fileName, "{\"isEnabled\": tru");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"holds no JSON object"_s));
        QCOMPARE(load(), std::nullopt);
        QVERIFY(!m_manager->isEnabled());
        QCOMPARE(m_folder->read(fileName), "{\"isEnabled\": tru");

        m_manager->setProviderConfiguration(rules);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"holds no JSON object"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"kept aside as"_s));
        QCOMPARE(save(), std::nullopt);
        QCOMPARE(m_folder->read(fileName + u".damaged-1"_s), "{\"isEnabled\": tru");
        QVERIFY(stored().contains(u"providerConfiguration"_s));
    }

    void aFileThatCannotBeWrittenIsAnInternalErrorWithItsReason()
    {
        QCOMPARE(load(), std::nullopt);
        QVERIFY(QDir().mkdir(m_folder->filePath(fileName)));
        m_manager->setProviderConfiguration(rules);
        const PlatformError expected{u"NEFilterErrorDomain"_s, 6,
            u"The filter configuration could not be stored: it is not a regular file."_s};
        QCOMPARE(save(), expected);
    }

    void aSaveIsFinishedAlsoIfTheManagerGoesAway()
    {
        QCOMPARE(load(), std::nullopt);
        m_manager->setProviderConfiguration(rules);
        bool answered = false;
        m_manager->save([&answered](const auto &) { answered = true; });
        m_manager.reset();
        QVERIFY(stored().contains(u"providerConfiguration"_s));
        QTest::qWait(150);
        QVERIFY(!answered);
    }

private:
    FilterManager::Completion answerInto(Answer &answer)
    {
        return [this, &answer](const std::optional<PlatformError> &error) {
            const std::lock_guard lock(m_mutex);
            answer = {true, error, std::this_thread::get_id()};
        };
    }

    bool hasArrived(const Answer &answer)
    {
        const std::lock_guard lock(m_mutex);
        return answer.arrived;
    }

    std::optional<PlatformError> load()
    {
        Answer answer;
        m_manager->load(answerInto(answer));
        [&] { QTRY_VERIFY(hasArrived(answer)); }();
        return answer.error;
    }

    std::optional<PlatformError> save()
    {
        Answer answer;
        m_manager->save(answerInto(answer));
        [&] { QTRY_VERIFY(hasArrived(answer)); }();
        return answer.error;
    }

    [[nodiscard]] QJsonObject stored() const
    {
        return QJsonDocument::fromJson(m_folder->read(fileName)).object();
    }

    StandardScheduler m_scheduler;
    std::mutex m_mutex;
    std::unique_ptr<StateFolder> m_folder;
    std::unique_ptr<SimulatedFilterManager> m_manager;
};

QTEST_GUILESS_MAIN(TestSimulatedFilterManager)
#include "tst_simulated_filter_manager.moc"
