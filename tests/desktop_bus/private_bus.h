#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace zorvane::tests
{

/** A session bus that nobody else knows; it ends with this. */
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();

    [[nodiscard]] const QString &address() const { return m_address; }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

/** A place on a bus, as a program of its own has it; it leaves the bus at its end. */
class BusMember
{
public:
    explicit BusMember(const PrivateBus &bus);
    ~BusMember();
    BusMember(const BusMember &) = delete;
    BusMember &operator=(const BusMember &) = delete;

    [[nodiscard]] QDBusConnection connection() const { return QDBusConnection(m_name); }

private:
    const QString m_name;
};

} // namespace zorvane::tests
