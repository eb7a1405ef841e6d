#pragma once

#include <memory>
#include <optional>
#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace zorvane::platform
{

/**
 * One domain of typed preferences. Safe to use from any thread. What is set is seen by the next
 * reader in this process at once; it reaches the store a moment later, whole or not at all. Other
 * programs' changes to other keys of the domain are kept.
 */
class Preferences
{
public:
    virtual ~Preferences() = default;

    /** True if the key has a value of any type; a key set to false is present. */
    [[nodiscard]] virtual bool contains(const QString &key) const = 0;
    /** The truth value under @p key by the platform's reading of numbers and texts; false if
     * absent. */
    [[nodiscard]] virtual bool boolean(const QString &key) const = 0;
    /** The bytes under @p key; nothing if absent or of another type. */
    [[nodiscard]] virtual std::optional<QByteArray> data(const QString &key) const = 0;
    /** The date under @p key, in UTC; nothing if absent or of another type. */
    [[nodiscard]] virtual std::optional<QDateTime> date(const QString &key) const = 0;
    /** The text under @p key; nothing if absent or of another type. */
    [[nodiscard]] virtual std::optional<QString> string(const QString &key) const = 0;

    virtual void setBoolean(const QString &key, bool value) = 0;
    virtual void setData(const QString &key, const QByteArray &value) = 0;
    virtual void setDate(const QString &key, const QDateTime &value) = 0;
    virtual void setString(const QString &key, const QString &value) = 0;

    /**
     * Waits until everything set so far has reached the store, and brings this object up to date
     * with what other programs wrote. May block on the disk.
     */
    virtual void synchronize() = 0;
};

/** Opens domains other than the program's own. */
class PreferencesSuites
{
public:
    virtual ~PreferencesSuites() = default;

    /** The shared domain of an application group; nothing if the system refuses it. Any thread. */
    [[nodiscard]] virtual std::unique_ptr<Preferences> open(const QString &name) = 0;
};

} // namespace zorvane::platform
