#include "fakes/fake_scheduler.h"
#include "platform/simulated/extension_state.h"
#include "platform/simulated/system_extensions.h"
#include "state_folder.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace zorvane::platform;
using namespace zorvane::platform::simulated;
using zorvane::tests::FakeScheduler;
using zorvane::tests::StateFolder;

namespace
{

/** Writes down what it hears. */
class Delegate final : public ActivationDelegate
{
public:
    ReplacementAction actionForReplacingExtension() override
    {
        heard += u"replace?"_s;
        return answer;
    }
    void requestNeedsUserApproval() override { heard += u"approval"_s; }
    void requestDidFinish(ActivationResult result) override
    {
        heard += u"finished %1"_s.arg(static_cast<int>(result));
    }
    void requestDidFail(const PlatformError &error) override
    {
        heard += u"failed %1 %2"_s.arg(error.domain, QString::number(error.code));
        description = error.description;
    }

    ReplacementAction answer = ReplacementAction::Replace;
    QStringList heard;
    QString description;
};

const QStringList completed{u"finished 0"_s};

} // namespace

class TestSimulatedSystemExtensions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_folder = std::make_unique<StateFolder>();
        m_extensions = std::make_unique<SimulatedSystemExtensions>(m_folder->system(), m_scheduler);
        m_delegate = std::make_shared<Delegate>();
    }

    void cleanup() { m_request.reset(); }

    void grantedAnActivationFinishesAfterTheDelay()
    {
        submit();
        m_scheduler.advance(599ms);
        QCOMPARE(m_delegate->heard, QStringList());
        m_scheduler.advance(1ms);
        QCOMPARE(m_delegate->heard, completed);
        QCOMPARE(stored(), (QJsonObject{{u"approved"_s, true}, {u"active"_s, true}}));
        m_scheduler.advance(1min);
        QCOMPARE(m_delegate->heard, completed);
    }

    void theDelayIsTheOneThatTheSystemHasThen()
    {
        m_folder->behave("{'activationDelay': 0}");
        submit();
        QCOMPARE(m_delegate->heard, QStringList()); // nothing before the call has returned
        m_scheduler.advance(0ms);
        QCOMPARE(m_delegate->heard, completed);

        m_folder->behave("{'activationDelay': 3}");
        submit();
        m_scheduler.advance(2999ms);
        QCOMPARE(m_delegate->heard, completed);
    }

    void askedForItFinishesOnceItIsAllowed()
    {
        m_folder->behave("{'approval': 'ask'}");
        submit();
        m_scheduler.advance(1min);
        QCOMPARE(m_delegate->heard, QStringList{u"approval"_s});
        QVERIFY(!m_folder->hasFile(u"extension.json"_s));

        QCOMPARE(writeExtensionState(file(), {.approved = false, .active = false}), std::nullopt);
        m_scheduler.advance(1min);
        QCOMPARE(m_delegate->heard, QStringList{u"approval"_s});

        QCOMPARE(writeExtensionState(file(), {.approved = true, .active = false}), std::nullopt);
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard, (QStringList{u"approval"_s, u"finished 0"_s}));
        QCOMPARE(stored(), (QJsonObject{{u"approved"_s, true}, {u"active"_s, true}}));
    }

    void allowedBeforeItFinishesWithoutAsking()
    {
        m_folder->behave("{'approval': 'ask'}");
        m_folder->write(u"extension.json"_s, "{\"approved\": true, \"active\": false}");
        submit();
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard, completed);
    }

    void deniedItFailsWithAuthorizationRequired()
    {
        m_folder->behave("{'approval': 'denied'}");
        submit();
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard, QStringList{u"failed OSSystemExtensionErrorDomain 13"_s});
        QCOMPARE(m_delegate->description, u"The system did not allow the extension."_s);
        QVERIFY(!m_folder->hasFile(u"extension.json"_s));
    }

    void theSystemCanChangeWhileTheUserDecides_data()
    {
        QTest::addColumn<QByteArray>("behaviour");
        QTest::addColumn<QString>("heard");

        QTest::newRow("granted") << "{'approval': 'granted'}"_ba << u"finished 0"_s;
        QTest::newRow("denied") << "{'approval': 'denied'}"_ba
                                << u"failed OSSystemExtensionErrorDomain 13"_s;
    }

    void theSystemCanChangeWhileTheUserDecides()
    {
        QFETCH(QByteArray, behaviour);
        QFETCH(QString, heard);
        m_folder->behave("{'approval': 'ask'}");
        submit();
        m_scheduler.advance(5s);
        m_folder->behave(behaviour);
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard, (QStringList{u"approval"_s, heard}));
        m_scheduler.advance(1min);
        QCOMPARE(m_delegate->heard.size(), 2);
    }

    void anExtensionMayNeedARestart()
    {
        m_folder->behave("{'rebootNeeded': true}");
        submit();
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard, QStringList{u"finished 1"_s});
        QCOMPARE(stored(), (QJsonObject{{u"approved"_s, true}, {u"active"_s, false}}));
    }

    void anActiveExtensionIsReplaced()
    {
        m_folder->write(u"extension.json"_s, "{\"approved\": true, \"active\": true}");
        submit();
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard, (QStringList{u"replace?"_s, u"finished 0"_s}));
    }

    void aRefusedReplacementEndsTheRequest()
    {
        m_folder->write(u"extension.json"_s, "{\"approved\": true, \"active\": true}");
        m_delegate->answer = ReplacementAction::Cancel;
        submit();
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard,
            (QStringList{u"replace?"_s, u"failed OSSystemExtensionErrorDomain 11"_s}));
    }

    void aFaultComesBeforeEverythingElse()
    {
        m_folder->behave("{'approval': 'ask', 'faults': [{'operation': 'activate', 'code': 8, "
                         "'description': 'Invalid code signature', 'times': 1}]}");
        submit();
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard, QStringList{u"failed OSSystemExtensionErrorDomain 8"_s});
        QCOMPARE(m_delegate->description, u"Invalid code signature"_s);

        submit();
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard.last(), u"approval"_s);
    }

    void aStateThatCannotBeStoredIsAnError()
    {
        QVERIFY(QDir().mkdir(m_folder->filePath(u"extension.json"_s)));
        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression(u"extension\\.json cannot be read"_s));
        submit();
        m_scheduler.advance(1s);
        QCOMPARE(m_delegate->heard, QStringList{u"failed OSSystemExtensionErrorDomain 1"_s});
        QCOMPARE(m_delegate->description,
            u"The extension could not be installed: it is not a regular file."_s);
    }

    void aDamagedStateReadsAsNotAllowedAndIsReportedOnce()
    {
        m_folder->behave("{'approval': 'ask'}");
        m_folder->write(u"extension.json"_s, "{\"approved\": tru");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"holds no JSON object"_s));
        submit();
        m_scheduler.advance(1min);
        QCOMPARE(m_delegate->heard, QStringList{u"approval"_s});
        QCOMPARE(m_folder->read(u"extension.json"_s), "{\"approved\": tru");
    }

    void aRequestThatIsLetGoCallsNobody()
    {
        submit();
        m_request.reset();
        m_scheduler.advance(1min);
        QCOMPARE(m_delegate->heard, QStringList());
    }

    void aDelegateThatIsGoneIsNotCalled()
    {
        const std::weak_ptr<Delegate> weak = m_delegate;
        submit();
        m_delegate.reset();
        QVERIFY(weak.expired()); // the request holds it weakly
        m_scheduler.advance(1min);
    }

private:
    void submit()
    {
        m_request = m_extensions->submitActivation(
            u"dev.kestrelworks.Zorvane.FilterExtension"_s, m_delegate);
    }

    [[nodiscard]] std::filesystem::path file() const { return m_folder->path() / "extension.json"; }

    [[nodiscard]] QJsonObject stored() const
    {
        return QJsonDocument::fromJson(m_folder->read(u"extension.json"_s)).object();
    }

    FakeScheduler m_scheduler;
    std::unique_ptr<StateFolder> m_folder;
    std::unique_ptr<SimulatedSystemExtensions> m_extensions;
    std::shared_ptr<Delegate> m_delegate;
    std::unique_ptr<ActivationRequest> m_request;
};

QTEST_GUILESS_MAIN(TestSimulatedSystemExtensions)
#include "tst_simulated_system_extensions.moc"
