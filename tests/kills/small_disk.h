#pragma once

#include <QFile>
#include <QProcess>
#include <QString>

namespace zorvane::tests
{

/** A file system of a test's own, in memory, with room for little. Only root can mount one. */
class SmallDisk
{
public:
    explicit SmallDisk(const QString &folder)
        : m_folder(folder)
        , m_isMounted(succeeds(QStringLiteral("mount"),
              {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                  QStringLiteral("size=2m"), QStringLiteral("tmpfs"), folder}))
    {
    }
    ~SmallDisk()
    {
        if (m_isMounted)
            succeeds(QStringLiteral("umount"), {QStringLiteral("--lazy"), m_folder});
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool isMounted() const { return m_isMounted; }

    /** Takes all the room that is left. */
    [[nodiscard]] bool fill() const
    {
        QFile ballast(ballastFile());
        if (!ballast.open(QFile::WriteOnly | QFile::Unbuffered))
            return false;
        while (ballast.write(QByteArray(4096, 'x')) == 4096) { }
        return ballast.size() > 0;
    }

    /** Gives it back. */
    [[nodiscard]] bool empty() const { return QFile::remove(ballastFile()); }

    [[nodiscard]] bool makeReadOnly() const
    {
        return succeeds(QStringLiteral("mount"),
            {QStringLiteral("-o"), QStringLiteral("remount,ro"), m_folder});
    }

private:
    [[nodiscard]] QString ballastFile() const { return m_folder + QStringLiteral("/ballast"); }

    static bool succeeds(const QString &command, const QStringList &arguments)
    {
        QProcess process;
        process.start(command, arguments);
        return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit
            && process.exitCode() == 0;
    }

    const QString m_folder;
    const bool m_isMounted;
};

} // namespace zorvane::tests
