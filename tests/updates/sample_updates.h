#pragma once

#include "platform/manifest_fetcher.h"
#include "updates/app_update.h"

namespace zorvane::tests
{

inline updates::AppUpdate sampleUpdate(
    const QString &version, const std::optional<qint64> &build = std::nullopt)
{
    updates::AppUpdate update;
    update.version = version;
    update.build = build;
    update.downloadURL = QStringLiteral("https://kestrelworks.dev/zorvane");
    return update;
}

/** JSON, written with apostrophes in the place of its quotation marks. */
inline QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

/** A server's answer that carries @p body. */
inline platform::ManifestFetcher::Result answerOf(const QByteArray &body, int status = 200)
{
    return platform::ManifestResponse{status, body};
}

inline platform::ManifestFetcher::Result answerOf(const updates::AppUpdate &update)
{
    return answerOf(updates::encodedUpdate(update));
}

} // namespace zorvane::tests
