#pragma once

#include "platform/bundles.h"
#include "platform/code_signatures.h"
#include "platform/directory_walk.h"
#include "platform/entitlements.h"
#include "platform/file_access.h"
#include "platform/icons.h"
#include "platform/log.h"
#include "platform/main_bundle.h"
#include "platform/motion_preference.h"
#include "platform/preferences.h"
#include "platform/system_actions.h"

#include <functional>
#include <QHash>
#include <QStringList>
#include <QVariantMap>
#include <utility>

/** @file The smaller services of a made-up system: what they hold is public, what they do is
 * recorded. */
namespace zorvane::tests
{

class FakePreferences final : public platform::Preferences
{
public:
    [[nodiscard]] bool contains(const QString &key) const override { return values.contains(key); }
    [[nodiscard]] bool boolean(const QString &key) const override
    {
        return values.value(key).toBool();
    }
    [[nodiscard]] std::optional<QByteArray> data(const QString &key) const override
    {
        return typed<QByteArray>(key);
    }
    [[nodiscard]] std::optional<QDateTime> date(const QString &key) const override
    {
        return typed<QDateTime>(key);
    }
    [[nodiscard]] std::optional<QString> string(const QString &key) const override
    {
        return typed<QString>(key);
    }
    void setBoolean(const QString &key, bool value) override { set(key, value); }
    void setData(const QString &key, const QByteArray &value) override { set(key, value); }
    void setDate(const QString &key, const QDateTime &value) override { set(key, value); }
    void setString(const QString &key, const QString &value) override { set(key, value); }
    void synchronize() override
    {
        ++synchronizations;
        if (writtenElsewhere)
            values = *std::exchange(writtenElsewhere, std::nullopt);
    }

    QVariantMap values;
    /** Called before each value is set, on its thread. */
    std::function<void(const QString &key)> beforeSet;
    /** What another program wrote; seen from the next synchronisation on. */
    std::optional<QVariantMap> writtenElsewhere;
    QStringList written;
    int synchronizations = 0;

private:
    template <typename Value>
    [[nodiscard]] std::optional<Value> typed(const QString &key) const
    {
        const QVariant value = values.value(key);
        if (value.metaType() != QMetaType::fromType<Value>())
            return std::nullopt;
        return value.value<Value>();
    }
    void set(const QString &key, const QVariant &value)
    {
        if (beforeSet)
            beforeSet(key);
        values.insert(key, value);
        written.append(key);
    }
};

/** Opens shared domains; what they hold is seen once they are synchronised. */
class FakeSuites final : public platform::PreferencesSuites
{
public:
    [[nodiscard]] std::unique_ptr<platform::Preferences> open(const QString &name) override
    {
        opened.append(name);
        if (whenOpened)
            whenOpened();
        if (refuses)
            return nullptr;
        auto suite = std::make_unique<FakePreferences>();
        suite->writtenElsewhere = domains.value(name);
        return suite;
    }

    QHash<QString, QVariantMap> domains;
    QStringList opened;
    /** Called in between by each opening, on its thread. */
    std::function<void()> whenOpened;
    bool refuses = false;
};

class FakeMainBundle final : public platform::MainBundle
{
public:
    [[nodiscard]] std::optional<QString> identifier() const override { return bundleIdentifier; }
    [[nodiscard]] std::filesystem::path location() const override { return path; }
    [[nodiscard]] std::optional<QString> shortVersion() const override { return version; }
    [[nodiscard]] std::optional<QString> buildVersion() const override { return build; }

    std::optional<QString> bundleIdentifier = QStringLiteral("dev.kestrelworks.Zorvane");
    std::filesystem::path path = "/Applications/Zorvane.app";
    std::optional<QString> version = QStringLiteral("1.0");
    std::optional<QString> build = QStringLiteral("1");
};

class FakeEntitlements final : public platform::Entitlements
{
public:
    [[nodiscard]] std::optional<QStringList> applicationGroups() const override { return groups; }

    std::optional<QStringList> groups
        = QStringList{QStringLiteral("group.dev.kestrelworks.Zorvane")};
};

class FakeLog final : public platform::Log
{
public:
    void notice(const QString &line) override { lines.append(line); }
    void error(const QString &line) override { lines.append(QStringLiteral("error: ") + line); }

    /** In order; those of the error level with "error: " in front. */
    QStringList lines;
};

class FakeActions final : public platform::SystemActions
{
public:
    void openUrl(const QUrl &url) override
    {
        calls.append(QStringLiteral("url ") + url.toString());
    }
    void openFolder(const QString &path) override
    {
        calls.append(QStringLiteral("folder ") + path);
    }
    [[nodiscard]] QList<QString> downloadsFolders() const override { return downloads; }
    void openSystemSettings() override { calls.append(QStringLiteral("settings")); }
    void terminate() override { calls.append(QStringLiteral("terminate")); }
    void comeToFront() override { calls.append(QStringLiteral("front")); }

    QList<QString> downloads{QStringLiteral("/Users/someone/Downloads")};
    QStringList calls;
};

class FakeMotion final : public platform::MotionPreference
{
public:
    [[nodiscard]] bool isReduced() const override { return m_isReduced; }
    void watch(std::function<void()> changed) override { m_changed = std::move(changed); }

    void setReduced(bool reduced)
    {
        m_isReduced = reduced;
        if (m_changed)
            m_changed();
    }

private:
    std::function<void()> m_changed;
    bool m_isReduced = false;
};

class FakeFileAccess final : public platform::FileAccess
{
public:
    [[nodiscard]] bool begin(const QUrl &) override
    {
        ++begun;
        return grants;
    }
    void end(const QUrl &) override { ++ended; }

    bool grants = true;
    int begun = 0;
    int ended = 0;
};

/** Bundles, signatures and folders that exist only by being listed here. */
class FakeBundles final : public platform::Bundles
{
public:
    [[nodiscard]] std::unique_ptr<platform::Bundle> open(
        const std::filesystem::path &path) const override
    {
        if (whenOpened)
            whenOpened(QString::fromStdString(path.string()));
        const auto found = information.constFind(QString::fromStdString(path.string()));
        return found == information.cend() ? nullptr : std::make_unique<Listed>(*found);
    }

    QHash<QString, QVariantMap> information;
    /** Called at each opening, on its thread. */
    std::function<void(const QString &path)> whenOpened;

private:
    class Listed final : public platform::Bundle
    {
    public:
        explicit Listed(QVariantMap information)
            : m_information(std::move(information))
        {
        }
        [[nodiscard]] std::optional<QString> identifier() const override
        {
            const QVariant value = informationValue(QStringLiteral("CFBundleIdentifier"));
            return value.isValid() ? std::optional(value.toString()) : std::nullopt;
        }
        [[nodiscard]] QVariant informationValue(const QString &key) const override
        {
            return m_information.value(key);
        }

    private:
        QVariantMap m_information;
    };
};

class FakeSignatures final : public platform::CodeSignatures
{
public:
    [[nodiscard]] std::optional<platform::SigningInformation> signingInformation(
        const std::filesystem::path &path) const override
    {
        const auto found = signatures.constFind(QString::fromStdString(path.string()));
        return found == signatures.cend() ? std::nullopt : std::optional(*found);
    }

    QHash<QString, platform::SigningInformation> signatures;
};

class FakeWalk final : public platform::DirectoryWalk
{
public:
    void walk(const std::filesystem::path &root, const Visitor &visit) const override
    {
        for (const auto &[path, kind] : items) {
            if (path.starts_with(root.string() + '/'))
                visit(path, kind);
        }
    }

    std::vector<std::pair<std::string, platform::ItemKind>> items;
};

class FakeIcons final : public platform::Icons
{
public:
    [[nodiscard]] QImage icon(const std::filesystem::path &, int) const override { return image; }

    QImage image;
};

} // namespace zorvane::tests
