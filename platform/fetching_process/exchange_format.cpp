#include "platform/fetching_process/exchange_format.h"

#include <algorithm>

namespace zorvane::platform::fetching_process
{

namespace
{

constexpr qsizetype longestHead = 200; // bytes
constexpr qsizetype longestDescription = 1000; // in UTF-16
constexpr qsizetype longestEncodedDescription = 3 * longestDescription;

const QByteArray answerWord = QByteArrayLiteral("answer");
const QByteArray errorWord = QByteArrayLiteral("error");

/** A number that is not negative. */
template <typename Number>
std::optional<Number> amountIn(const QString &text)
{
    bool understood = false;
    const qlonglong number = text.toLongLong(&understood);
    return understood && number >= 0 ? std::optional(Number(number)) : std::nullopt;
}

} // namespace

QStringList encodedRequest(const ManifestRequest &request)
{
    return {
        QString::fromLatin1(request.address.toEncoded()),
        QString::fromUtf8(request.accept),
        QString::number(request.longestBody),
        QString::number(request.idleTimeout.count()),
        QString::number(request.totalTimeout.count()),
    };
}

std::optional<ManifestRequest> decodedRequest(const QStringList &arguments)
{
    if (arguments.size() != 5)
        return std::nullopt;
    const auto longestBody = amountIn<qsizetype>(arguments[2]);
    const auto idleTimeout = amountIn<std::chrono::milliseconds>(arguments[3]);
    const auto totalTimeout = amountIn<std::chrono::milliseconds>(arguments[4]);
    if (!longestBody || !idleTimeout || !totalTimeout)
        return std::nullopt;
    return ManifestRequest{
        .address = QUrl::fromEncoded(arguments[0].toUtf8()),
        .accept = arguments[1].toUtf8(),
        .longestBody = *longestBody,
        .idleTimeout = *idleTimeout,
        .totalTimeout = *totalTimeout,
    };
}

QByteArray encodedAnswer(const ManifestFetcher::Result &result)
{
    if (const auto *const error = std::get_if<PlatformError>(&result))
        return errorWord + ' ' + error->domain.toUtf8() + ' ' + QByteArray::number(error->code)
            + '\n' + error->description.left(longestDescription).toUtf8();
    const auto &response = std::get<ManifestResponse>(result);
    return answerWord + ' ' + QByteArray::number(response.status) + '\n' + response.body;
}

std::optional<ManifestFetcher::Result> decodedAnswer(const QByteArray &bytes, qsizetype longestBody)
{
    const qsizetype end = bytes.first(std::min(bytes.size(), longestHead)).indexOf('\n');
    if (end < 0)
        return std::nullopt;
    const QList<QByteArray> head = bytes.first(end).split(' ');
    const QByteArray rest = bytes.sliced(end + 1);
    bool understood = false;
    if (head.size() == 2 && head[0] == answerWord && rest.size() <= longestBody + 1) {
        const int status = head[1].toInt(&understood);
        if (understood)
            return ManifestResponse{status, rest};
    }
    if (head.size() == 3 && head[0] == errorWord && rest.size() <= longestEncodedDescription) {
        const qint64 code = head[2].toLongLong(&understood);
        if (understood)
            return PlatformError{QString::fromUtf8(head[1]), code, QString::fromUtf8(rest)};
    }
    return std::nullopt;
}

qsizetype longestAnswer(qsizetype longestBody)
{
    return longestHead + std::max(longestBody + 1, longestEncodedDescription);
}

} // namespace zorvane::platform::fetching_process
