#pragma once

#include "platform/simulated/embedded_signature.h"
#include "platform/simulated/mach_o.h"
#include "tests/signed_code/signed_code.h"

#include <QTest>

/** @file What the table-driven tests of signatures in Mach-O files have in common. */
namespace zorvane::tests
{

inline const QString noCode = QStringLiteral("no code");
inline const QString notMachO = QStringLiteral("not Mach-O");
inline const QString absent = QStringLiteral("absent");
inline const QString damaged = QStringLiteral("damaged");

/** What is read from @p file, as one line. */
[[nodiscard]] inline QString readingOf(const QByteArray &file)
{
    using namespace platform;
    using namespace platform::simulated;
    MemorySource source(
        std::span(reinterpret_cast<const std::uint8_t *>(file.constData()), size_t(file.size())));
    WindowSource window(source);
    const ByteRange bytes(window);
    if (!isMachO(bytes))
        return notMachO;
    const auto reading = readEmbeddedSignature(bytes);
    if (!reading)
        return noCode;
    if (std::holds_alternative<Absent>(*reading))
        return absent;
    const auto *information = std::get_if<SigningInformation>(&*reading);
    if (!information)
        return damaged;
    const auto &team = information->teamIdentifier;
    return *information->identifier + (team ? QStringLiteral(" of ") + *team : QString());
}

[[nodiscard]] inline QByteArray programWith(const QByteArray &signature)
{
    return machO({.signature = signature});
}

/** A signed program whose identifier tells it from others. */
[[nodiscard]] inline QByteArray named(const QByteArray &identifier, const ImageForm &form = {})
{
    ImageForm result = form;
    result.signature = signature({.identifier = identifier});
    return machO(result);
}

/** A row of the tables: a file and what readingOf() says of it. */
inline void row(const char *name, const QByteArray &file, const QString &reading)
{
    QTest::newRow(name) << file << reading;
}

inline void addColumns()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("reading");
}

inline void checkRow()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, reading);
    QCOMPARE(readingOf(file), reading);
}

} // namespace zorvane::tests
