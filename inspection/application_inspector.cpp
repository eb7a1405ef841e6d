#include "inspection/application_inspector.h"

#include "app/records/paths.h"
#include "inspection/application_icon.h"
#include "inspection/helper_candidates.h"

#include <algorithm>
#include <memory>
#include <QFile>
#include <QSet>

using namespace Qt::StringLiterals;

namespace zorvane::inspection
{

namespace
{

/** The path of a file URL without trailing slashes; empty for any other URL. */
QString bundlePath(const QUrl &url)
{
    QString path = url.toLocalFile();
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

std::filesystem::path nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

QString displayName(const platform::Bundle &bundle, const QString &path)
{
    for (const QString &key : {u"CFBundleDisplayName"_s, u"CFBundleName"_s}) {
        const QVariant value = bundle.informationValue(key);
        if (value.typeId() == QMetaType::QString)
            return value.toString();
    }
    return records::lastPathComponentWithoutExtension(path);
}

} // namespace

QString describe(ApplicationInspectionError error)
{
    switch (error) {
    case ApplicationInspectionError::NotAnApplication:
        return u"Drop an application with the .app extension."_s;
    case ApplicationInspectionError::MissingIdentifier:
        return u"This application's identifier could not be read."_s;
    case ApplicationInspectionError::UnsignedApplication:
        return u"This application does not have an identifiable code signature."_s;
    }
    return {};
}

ApplicationInspector::ApplicationInspector(const Services &services)
    : m_services(services)
{
}

InspectionResult ApplicationInspector::inspectApplication(const QUrl &url, const QUuid &id) const
{
    const QString path = bundlePath(url);
    // The system would open what stands in front of a NUL.
    if (path.contains(QChar::Null) || records::pathExtension(path).toLower() != u"app")
        return ApplicationInspectionError::NotAnApplication;
    const std::filesystem::path native = nativePath(path);
    const std::unique_ptr<platform::Bundle> bundle = m_services.bundles.open(native);
    if (!bundle)
        return ApplicationInspectionError::NotAnApplication;
    const std::optional<QString> identifier = bundle->identifier();
    if (!identifier)
        return ApplicationInspectionError::MissingIdentifier;
    const std::optional<records::CodeIdentity> mainIdentity = readCodeIdentity(native);
    if (!mainIdentity)
        return ApplicationInspectionError::UnsignedApplication;

    records::BlockedApplication application;
    application.id = id;
    application.name = displayName(*bundle, path);
    application.bundleIdentifier = *identifier;
    application.signingIdentifier = mainIdentity->signingIdentifier;
    application.teamIdentifier = mainIdentity->teamIdentifier;
    application.auxiliaryCodeIdentities = discoverAuxiliaryIdentities(native, *mainIdentity);
    application.inspectionVersion = records::currentInspectionVersion;
    application.path = path;
    application.iconData = makeIconData(native);
    return application;
}

std::optional<records::CodeIdentity> ApplicationInspector::readCodeIdentity(
    const std::filesystem::path &path) const
{
    const auto information = m_services.signatures.signingInformation(path);
    if (!information || !information->identifier)
        return std::nullopt;
    return records::CodeIdentity::make(*information->identifier, information->teamIdentifier);
}

QList<records::CodeIdentity> ApplicationInspector::discoverAuxiliaryIdentities(
    const std::filesystem::path &bundle, const records::CodeIdentity &mainIdentity) const
{
    QSet<records::CodeIdentity> found;
    for (const std::filesystem::path &candidate : helperCandidates(m_services.walk, bundle)) {
        const auto identity = readCodeIdentity(candidate);
        if (identity && *identity != mainIdentity)
            found.insert(*identity);
    }
    QList<records::CodeIdentity> result(found.cbegin(), found.cend());
    std::ranges::sort(result, records::precedes);
    return result;
}

std::optional<QByteArray> ApplicationInspector::makeIconData(
    const std::filesystem::path &path) const
{
    return encodedIcon(m_services.icons.icon(path, iconSide));
}

} // namespace zorvane::inspection
