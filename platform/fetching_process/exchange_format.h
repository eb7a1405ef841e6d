#pragma once

#include "platform/manifest_fetcher.h"

#include <optional>
#include <QStringList>

/**
 * @file
 * What is said between a program and the one that fetches for it. The request is the command line,
 * one argument a field. The answer is a line, "answer STATUS" or "error DOMAIN CODE", and after it
 * all the rest: the body as it stands, or the error's description in UTF-8. It is whole if the
 * program that wrote it ended well.
 */
namespace zorvane::platform::fetching_process
{

[[nodiscard]] QStringList encodedRequest(const ManifestRequest &request);
/** Nothing if these are no arguments of a request. */
[[nodiscard]] std::optional<ManifestRequest> decodedRequest(const QStringList &arguments);

/** A description of an error is cut where it is too long for anybody to read. */
[[nodiscard]] QByteArray encodedAnswer(const ManifestFetcher::Result &result);
/** Nothing if @p bytes are no answer to a request for a body of at most @p longestBody. */
[[nodiscard]] std::optional<ManifestFetcher::Result> decodedAnswer(
    const QByteArray &bytes, qsizetype longestBody);
/** No answer to such a request has more bytes. */
[[nodiscard]] qsizetype longestAnswer(qsizetype longestBody);

} // namespace zorvane::platform::fetching_process
