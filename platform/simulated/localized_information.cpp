#include "platform/simulated/localized_information.h"

#include "platform/simulated/property_list.h"
#include "platform/simulated/small_file.h"

#include <QHash>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace zorvane::platform::simulated
{

namespace
{

/** A localisation's name in one form: the names of before language codes replaced, "-" between the
 * parts, lower case. */
QString canonicalLanguage(const QString &name)
{
    static const QHash<QString, QString> codes{
        {u"english"_s, u"en"_s},
        {u"french"_s, u"fr"_s},
        {u"german"_s, u"de"_s},
        {u"italian"_s, u"it"_s},
        {u"dutch"_s, u"nl"_s},
        {u"spanish"_s, u"es"_s},
        {u"japanese"_s, u"ja"_s},
    };
    QString language = name.toLower();
    language.replace(u'_', u'-');
    return codes.value(language, language);
}

QString baseLanguage(const QString &canonical)
{
    return canonical.section(u'-', 0, 0);
}

QVariantMap readTable(const fs::path &path)
{
    const auto bytes = readSmallFile(path, propertyListSizeLimit);
    return bytes ? readPropertyList(*bytes).toMap() : QVariantMap();
}

/** The names of the localised folders, sorted so that a choice among equals is always the same. */
QStringList localizedFolders(const fs::path &resources)
{
    QStringList names;
    std::error_code error;
    for (fs::directory_iterator entry(resources, error);
         !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path name = entry->path().filename();
        if (name.extension() == ".lproj")
            names.append(QString::fromStdString(name.stem().string()));
    }
    names.sort();
    return names;
}

/** Those of @p available that suit @p wanted, the best first: the very one, its language without a
 * region, another region of its language. */
QStringList matches(const QStringList &available, const QString &wanted)
{
    const QString exact = canonicalLanguage(wanted);
    const QString base = baseLanguage(exact);
    QStringList result;
    const auto append = [&](auto &&suits) {
        for (const QString &name : available) {
            if (!result.contains(name) && suits(canonicalLanguage(name)))
                result.append(name);
        }
    };
    append([&](const QString &name) { return name == exact; });
    append([&](const QString &name) { return name == base; });
    append([&](const QString &name) { return baseLanguage(name) == base; });
    return result;
}

} // namespace

QVariantMap readLocalizedInformation(
    const BundleLayout &layout, const QStringList &languages, const QString &developmentRegion)
{
    const QVariantMap global = readTable(layout.resources / "InfoPlist.strings");
    if (!global.isEmpty())
        return global;
    const QVariantMap compiled = readTable(layout.resources / "InfoPlist.loctable");
    const QStringList available = localizedFolders(layout.resources) + compiled.keys();
    for (const QString &wanted : languages + QStringList{developmentRegion, u"Base"_s}) {
        for (const QString &language : matches(available, wanted)) {
            const QVariantMap fromCompiled = compiled.value(language).toMap();
            if (!fromCompiled.isEmpty())
                return fromCompiled;
            const std::string folder = (language + u".lproj"_s).toStdString();
            const QVariantMap table = readTable(layout.resources / folder / "InfoPlist.strings");
            if (!table.isEmpty())
                return table;
        }
    }
    return {};
}

} // namespace zorvane::platform::simulated
