#pragma once

#include "platform/bundle_reading.h"
#include "tests/bundle_files/bundle_files.h"
#include "tests/signed_code/signed_code.h"

#include <QString>

/** @file What tests of the code-signature port have in common. */
namespace zorvane::tests
{

inline const QString noCode = QStringLiteral("no code");
inline const QString unsignedCode = QStringLiteral("unsigned");

/** What is read for @p path, as one line. */
[[nodiscard]] inline QString readingOf(const std::filesystem::path &path)
{
    const auto reading = platform::makeBundleReading().signatures->signingInformation(path);
    if (!reading)
        return noCode;
    if (!reading->identifier)
        return unsignedCode;
    const auto &team = reading->teamIdentifier;
    return *reading->identifier + (team ? QStringLiteral(" of ") + *team : QString());
}

[[nodiscard]] inline QByteArray signedProgram(const QByteArray &identifier)
{
    return machO({.signature = signature({.identifier = identifier})});
}

[[nodiscard]] inline QByteArray unsignedProgram()
{
    return machO();
}

} // namespace zorvane::tests
