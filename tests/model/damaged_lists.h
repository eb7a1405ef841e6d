#pragma once

#include "app/records/blocked_application_json.h"
#include "app/store_fixture.h"

#include <QDir>
#include <QTemporaryDir>

namespace zorvane::tests
{

/** The damaged lists that a modelled disk has held: when one is overwritten, its bytes have to be
 * set aside already. Nothing else ever is. */
class DamagedLists
{
public:
    /** @p system does not outlive this. */
    explicit DamagedLists(FakePlatform &system)
        : m_preferences(system.preferences)
    {
        system.ports.setAsideFolder = m_folder.path().toStdString();
        m_preferences.beforeSet = [this](const QString &key) {
            if (key == listKey)
                overwritten(m_preferences.data(listKey).value_or(QByteArray()));
        };
    }

    /** Damages the list that is stored, if one is. */
    void damage()
    {
        const QByteArray bytes = m_preferences.data(listKey).value_or(QByteArray());
        if (bytes.size() < 3)
            return;
        m_preferences.values.insert(listKey, bytes.chopped(2));
        m_damaged.append(bytes.chopped(2));
    }

    /** How many were overwritten. */
    [[nodiscard]] int count() const { return m_overwritten; }

    [[nodiscard]] QString broken() const
    {
        if (m_isLost)
            return QStringLiteral("a damaged list was overwritten before it was set aside");
        QList<QByteArray> expected = m_damaged;
        const auto kept = setAside();
        for (const QByteArray &bytes : kept) {
            if (!expected.removeOne(bytes))
                return QStringLiteral("what was not damaged was set aside, or something twice");
        }
        constexpr qsizetype most = 5;
        return kept.size() > most ? QStringLiteral("too much is set aside") : QString();
    }

private:
    void overwritten(const QByteArray &bytes)
    {
        if (bytes.isEmpty() || records::decodedApplications(bytes))
            return;
        ++m_overwritten;
        m_isLost = m_isLost || !setAside().contains(bytes);
    }

    [[nodiscard]] QList<QByteArray> setAside() const
    {
        QList<QByteArray> result;
        for (const QFileInfo &info : QDir(m_folder.path()).entryInfoList(QDir::Files)) {
            QFile file(info.filePath());
            result.append(file.open(QFile::ReadOnly) ? file.readAll() : QByteArray());
        }
        return result;
    }

    FakePreferences &m_preferences;
    const QTemporaryDir m_folder;
    QList<QByteArray> m_damaged;
    int m_overwritten = 0;
    bool m_isLost = false;
};

} // namespace zorvane::tests
