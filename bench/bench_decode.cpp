#include "app/records/blocked_application_json.h"
#include "bench/report.h"

#include <cstdlib>
#include <QRandomGenerator>
#include <simdjson.h>

using namespace Qt::StringLiterals;
using namespace zorvane;

namespace
{

constexpr int applicationCount = 500;
constexpr int identityCount = 20;
constexpr int iconSize = 10'000;

QByteArray randomBytes(QRandomGenerator &random, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

QByteArray savedList()
{
    QRandomGenerator random(1);
    QList<records::BlockedApplication> applications(applicationCount);
    for (int i = 0; i < applicationCount; ++i) {
        records::BlockedApplication &application = applications[i];
        application.id = QUuid::createUuidV5(QUuid(), QString::number(i));
        application.name = u"Application %1"_s.arg(i);
        application.bundleIdentifier = u"com.example.application%1"_s.arg(i);
        application.signingIdentifier = application.bundleIdentifier;
        application.teamIdentifier = u"ABCDE12345"_s;
        application.path = u"/Applications/Application %1.app"_s.arg(i);
        application.inspectionVersion = records::currentInspectionVersion;
        application.iconData = randomBytes(random, iconSize);
        QList<records::CodeIdentity> &identities
            = application.auxiliaryCodeIdentities.emplace(QList<records::CodeIdentity>());
        for (int j = 0; j < identityCount; ++j)
            identities.append({u"%1.helper%2"_s.arg(application.signingIdentifier).arg(j),
                application.teamIdentifier});
    }
    return records::encodedApplications(applications);
}

/** What no reading of such a list can do without. */
void parseAndDecodeIcons(const QByteArray &text)
{
    simdjson::dom::parser parser;
    const simdjson::dom::array list
        = parser.parse(text.data(), static_cast<size_t>(text.size())).get_array();
    for (const simdjson::dom::element element : list) {
        const std::string_view icon = element["iconData"].get_string();
        bench::keep(QByteArray::fromBase64(
            QByteArray::fromRawData(icon.data(), static_cast<qsizetype>(icon.size()))));
    }
}

} // namespace

int main()
{
    const QByteArray text = savedList();
    const auto decoded = records::decodedApplications(text);
    if (!decoded || decoded->size() != applicationCount)
        return EXIT_FAILURE;
    const auto times = bench::compare(
        31, [&] { bench::keep(records::decodedApplications(text)); },
        [&] { parseAndDecodeIcons(text); });
    bench::report("decoding a list of 500 applications with icons",
        "simdjson's bare parse and Qt's base64 of the icons", times, "ms", 2);
    return EXIT_SUCCESS;
}
