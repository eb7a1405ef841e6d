#include "platform/fetching_process/process_manifest_fetcher.h"

#include "platform/fetching_process/exchange_format.h"

#include <QProcess>
#include <QTimer>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace zorvane::platform::fetching_process
{

namespace
{

using Problem = ProcessManifestFetcher::Problem;

// The program keeps the time itself; this much later nobody believes that any more.
constexpr auto grace = 3s;

/** One program and what it has said so far. Answers once, always out of the event loop, and deletes
 * itself when the program has ended. */
class ProcessExchange final : public QObject
{
public:
    ProcessExchange(ManifestRequest request, ManifestFetcher::Completion done, QObject *parent);
    ~ProcessExchange() override;

    void begin(const QString &program);

private:
    void take();
    void read();
    void errorOccurred(QProcess::ProcessError error);
    void ended();
    void fail(Problem problem, const QString &description);
    void answer(const ManifestFetcher::Result &result);

    const ManifestRequest m_request;
    ManifestFetcher::Completion m_done;
    QProcess m_process;
    QByteArray m_output;
    QTimer m_backstop;
};

ProcessExchange::ProcessExchange(
    ManifestRequest request, ManifestFetcher::Completion done, QObject *parent)
    : QObject(parent)
    , m_request(std::move(request))
    , m_done(std::move(done))
{
    // Queued, as a start can fail at once, and an answer may be the end of all this.
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &ProcessExchange::read,
        Qt::QueuedConnection);
    connect(&m_process, &QProcess::errorOccurred, this, &ProcessExchange::errorOccurred,
        Qt::QueuedConnection);
    connect(&m_process, &QProcess::finished, this, &ProcessExchange::ended, Qt::QueuedConnection);
    m_backstop.setSingleShot(true);
    connect(&m_backstop, &QTimer::timeout, this,
        [this] { fail(Problem::NotEnded, u"The program that fetches does not end"_s); });
}

ProcessExchange::~ProcessExchange()
{
    m_process.kill();
    m_process.waitForFinished();
}

void ProcessExchange::begin(const QString &program)
{
    m_backstop.start(m_request.totalTimeout + grace);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Its standard input stays open: that this closes tells it of the end of whoever started it.
    m_process.start(program, encodedRequest(m_request));
}

/** Takes what it has said since, one byte more than an answer can have at most. */
void ProcessExchange::take()
{
    m_output += m_process.read(longestAnswer(m_request.longestBody) + 1 - m_output.size());
}

void ProcessExchange::read()
{
    take();
    if (m_output.size() > longestAnswer(m_request.longestBody))
        fail(Problem::NotUnderstood, u"The program that fetches says more than it was asked"_s);
}

void ProcessExchange::errorOccurred(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart)
        fail(Problem::NotStarted,
            u"The program that fetches cannot be started: "_s + m_process.errorString());
}

void ProcessExchange::ended()
{
    take();
    if (m_process.exitStatus() != QProcess::NormalExit || m_process.exitCode() != EXIT_SUCCESS)
        fail(Problem::Failed, u"The program that fetches failed"_s);
    else if (const auto result = decodedAnswer(m_output, m_request.longestBody))
        answer(*result);
    else
        fail(Problem::NotUnderstood, u"The program that fetches gave no answer"_s);
}

void ProcessExchange::fail(Problem problem, const QString &description)
{
    answer(PlatformError{u"FetchingProcess"_s, problem, description});
}

void ProcessExchange::answer(const ManifestFetcher::Result &result)
{
    // A signal may have been on its way when the answer was given.
    if (!m_done)
        return;
    m_backstop.stop();
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning) {
        deleteLater();
    } else {
        connect(&m_process, &QProcess::finished, this, &QObject::deleteLater);
        m_process.kill();
    }
    std::exchange(m_done, nullptr)(result);
}

} // namespace

ProcessManifestFetcher::ProcessManifestFetcher(QString program, std::chrono::milliseconds pause)
    : m_program(std::move(program))
    , m_pause(pause)
{
}

ProcessManifestFetcher::~ProcessManifestFetcher() = default;

void ProcessManifestFetcher::fetch(const ManifestRequest &request, Completion done)
{
    auto *const exchange = new ProcessExchange(request, std::move(done), &m_exchanges);
    const auto begin = [exchange, program = m_program] { exchange->begin(program); };
    if (m_pause.hasExpired())
        begin();
    else
        QTimer::singleShot(static_cast<int>(m_pause.remainingTime()), exchange, begin);
}

} // namespace zorvane::platform::fetching_process
