#pragma once

#include <csignal>
#include <QByteArray>
#include <QProcess>
#include <QString>
#include <unistd.h>

namespace zorvane::tests
{

/** A program that was started on a state folder; killed with this object if it still runs. */
class StartedProgram
{
public:
    StartedProgram(const QString &program, const QString &folder, const QString &token = {},
        const QStringList &arguments = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("ZORVANE_SYSTEM_DIR"), folder);
        environment.remove(QStringLiteral("XDG_ACTIVATION_TOKEN"));
        if (!token.isEmpty())
            environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), token);
        m_process.setProcessEnvironment(environment);
        // Rights that the test has put down for a while are not for the program to take up again.
        if (::getuid() != ::geteuid()) {
            m_process.setChildProcessModifier(
                [] { static_cast<void>(::setreuid(::geteuid(), ::geteuid())); });
        }
        m_process.start(program, arguments);
    }
    ~StartedProgram()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    StartedProgram(const StartedProgram &) = delete;
    StartedProgram &operator=(const StartedProgram &) = delete;

    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }

    /** The next line that it says; empty if it ended or says nothing for a while. */
    QByteArray line() { return nextLine(QProcess::StandardOutput); }
    /** Waits; true if it says something in the meantime. */
    bool saysSomethingWithin(int milliseconds) { return m_process.waitForReadyRead(milliseconds); }
    /** The next line on its standard error, likewise. */
    QByteArray errorLine() { return nextLine(QProcess::StandardError); }

    /** Waits for its end. */
    int exitStatus()
    {
        if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(30'000))
            return -1;
        return m_process.exitCode();
    }

    QByteArray errors() { return m_process.readAllStandardError(); }
    /** False if it does not run any more. */
    [[nodiscard]] bool signal(int number)
    {
        // To the process 0 would mean to this whole group of processes.
        const auto process = static_cast<pid_t>(m_process.processId());
        return process > 0 && ::kill(process, number) == 0;
    }
    /** Waits for its end; true if it did not end by itself but by this signal. */
    [[nodiscard]] bool endsBy(int number)
    {
        return exitStatus() == number && m_process.exitStatus() == QProcess::CrashExit;
    }

private:
    QByteArray nextLine(QProcess::ProcessChannel channel)
    {
        m_process.setReadChannel(channel);
        while (!m_process.canReadLine() && m_process.waitForReadyRead(30'000)) { }
        return m_process.readLine().trimmed();
    }

    QProcess m_process;
};

} // namespace zorvane::tests
