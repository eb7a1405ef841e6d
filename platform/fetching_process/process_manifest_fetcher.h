#pragma once

#include "platform/manifest_fetcher.h"

#include <chrono>
#include <QDeadlineTimer>
#include <QObject>
#include <QString>

namespace zorvane::platform::fetching_process
{

/**
 * Has a program of its own fetch each document. What an exchange needs, above all the TLS library,
 * is gone with that program, and whatever a server's answer does to it, it does not do here. That
 * program's errors are passed on as they are; those about it have the domain "FetchingProcess" and
 * a code of Problem.
 */
class ProcessManifestFetcher final : public ManifestFetcher
{
public:
    enum Problem : qint64 {
        NotStarted = 1,
        Failed, ///< it crashed, or ended with a status that is not 0
        NotUnderstood, ///< it wrote something else than an answer, or more than one can have
        NotEnded, ///< not even some time after the exchange should have
    };

    /**
     * @p program is a path, or a name that $PATH leads to. None is started before @p pause has
     * passed from now.
     */
    explicit ProcessManifestFetcher(QString program, std::chrono::milliseconds pause = {});
    /** Kills the programs that still run, and waits for their end. */
    ~ProcessManifestFetcher() override;

    /** Answers on the main thread. */
    void fetch(const ManifestRequest &request, Completion done) override;

private:
    const QString m_program;
    const QDeadlineTimer m_pause;
    /** The parent of all exchanges. */
    QObject m_exchanges;
};

} // namespace zorvane::platform::fetching_process
