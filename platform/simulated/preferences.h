#pragma once

#include "platform/preferences.h"

#include <map>
#include <memory>
#include <mutex>

namespace zorvane::platform::simulated
{

class PreferencesDomain;
class SimulatedSystem;

/** Preferences in a property-list file of the state folder. */
class FilePreferences final : public Preferences
{
public:
    explicit FilePreferences(std::shared_ptr<PreferencesDomain> domain);

    [[nodiscard]] bool contains(const QString &key) const override;
    [[nodiscard]] bool boolean(const QString &key) const override;
    [[nodiscard]] std::optional<QByteArray> data(const QString &key) const override;
    [[nodiscard]] std::optional<QDateTime> date(const QString &key) const override;
    [[nodiscard]] std::optional<QString> string(const QString &key) const override;

    void setBoolean(const QString &key, bool value) override;
    void setData(const QString &key, const QByteArray &value) override;
    void setDate(const QString &key, const QDateTime &value) override;
    void setString(const QString &key, const QString &value) override;

    void synchronize() override;

private:
    std::shared_ptr<PreferencesDomain> m_domain;
};

/** The shared domains; all that are opened under one name in this program see one another. */
class FilePreferencesSuites final : public PreferencesSuites
{
public:
    explicit FilePreferencesSuites(std::shared_ptr<const SimulatedSystem> system);

    /** Refuses the program's own domain, and a name that cannot be part of a file's name. */
    [[nodiscard]] std::unique_ptr<Preferences> open(const QString &name) override;

private:
    const std::shared_ptr<const SimulatedSystem> m_system;
    std::mutex m_mutex;
    std::map<QString, std::shared_ptr<PreferencesDomain>> m_domains;
};

/** The program's own domain. */
[[nodiscard]] std::unique_ptr<Preferences> makeStandardPreferences(const SimulatedSystem &system);

/**
 * The truth value of a preferences value as the platform reads it: a number other than zero, and a
 * text that begins, after blanks, with T, t, Y or y, or with an optional sign, zeros, and a digit
 * from 1 to 9. Everything else is false.
 */
[[nodiscard]] bool truthOf(const QVariant &value);

} // namespace zorvane::platform::simulated
