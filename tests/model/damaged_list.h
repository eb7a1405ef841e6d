#pragma once

#include "app/records/blocked_application_json.h"
#include "app/store_fixture.h"

#include <memory>
#include <QDir>
#include <QTemporaryDir>

namespace zorvane::tests
{

/** The stored list of a modelled system, if it is damaged: its bytes have to be somewhere at every
 * moment. */
class DamagedList
{
public:
    /** Looks at what is stored now, and at what happens to it. @p system does not outlive this. */
    void watch(FakePlatform &system)
    {
        m_bytes = system.preferences.data(listKey).value_or(QByteArray());
        if (m_bytes.isEmpty() || records::decodedApplications(m_bytes))
            return;
        m_folder = std::make_unique<QTemporaryDir>();
        system.ports.setAsideFolder = m_folder->path().toStdString();
        system.preferences.beforeSet = [this](const QString &key) {
            m_isLost = m_isLost || (key == listKey && !isSetAside());
        };
    }

    /** True once something was stored in its place while no file held it. */
    [[nodiscard]] bool isLost() const { return m_isLost; }
    [[nodiscard]] bool isSetAside() const
    {
        if (!m_folder)
            return false;
        const QStringList names = QDir(m_folder->path()).entryList(QDir::Files);
        QFile file(m_folder->filePath(names.value(0)));
        return names.size() == 1 && file.open(QFile::ReadOnly) && file.readAll() == m_bytes;
    }

private:
    QByteArray m_bytes;
    std::unique_ptr<QTemporaryDir> m_folder;
    bool m_isLost = false;
};

} // namespace zorvane::tests
