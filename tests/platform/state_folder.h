#pragma once

#include "platform/simulated/simulated_system.h"

#include <filesystem>
#include <memory>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace zorvane::tests
{

/** A state folder of its own for each test, gone with it. */
class StateFolder
{
public:
    [[nodiscard]] std::filesystem::path path() const { return m_folder.path().toStdString(); }
    [[nodiscard]] QString filePath(const QString &name) const { return m_folder.filePath(name); }

    /** Writes "system.json"; single quotes in @p json stand for double ones. */
    void behave(QByteArray json) const
    {
        write(QStringLiteral("system.json"), json.replace('\'', '"'));
    }

    /** Writes a file as a person or another tool would: in place. */
    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(filePath(name));
        QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(file.errorString()));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    [[nodiscard]] bool hasFile(const QString &name) const { return QFile::exists(filePath(name)); }

    /** The bytes of a file; null if there is none. */
    [[nodiscard]] QByteArray read(const QString &name) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] std::shared_ptr<platform::simulated::SimulatedSystem> system() const
    {
        return std::make_shared<platform::simulated::SimulatedSystem>(path());
    }

private:
    QTemporaryDir m_folder;
};

} // namespace zorvane::tests
