#include "platform/simulated/localized_information.h"

#include <algorithm>
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

/** A localisation: its name in the bundle, and the one to compare. */
struct Localization {
    QString name;
    QString canonical;
};

/** The localisations of these names, each once; a hostile table may have very many. */
QList<Localization> localizationsOf(QStringList names)
{
    names.removeDuplicates();
    QList<Localization> localizations;
    for (const QString &name : names)
        localizations.append({name, canonicalLanguage(name)});
    return localizations;
}

/** Those of @p available that suit @p wanted, the best first: the very one, its language without a
 * region, another region of its language. */
QList<Localization> matches(QList<Localization> available, const QString &wanted)
{
    const QString exact = canonicalLanguage(wanted);
    const QString base = baseLanguage(exact);
    auto rest = available.begin();
    const auto take = [&](auto &&suits) {
        rest = std::stable_partition(
            rest, available.end(), [&](const Localization &one) { return suits(one.canonical); });
    };
    take([&](const QString &name) { return name == exact; });
    take([&](const QString &name) { return name == base; });
    take([&](const QString &name) { return baseLanguage(name) == base; });
    available.erase(rest, available.end());
    return available;
}

} // namespace

QVariantMap readLocalizedInformation(
    const BundleLayout &layout, const QStringList &languages, const QString &developmentRegion)
{
    QVariantMap global = readBundleTable(layout.resources / "InfoPlist.strings");
    if (!global.isEmpty())
        return global;
    const QVariantMap compiled = readBundleTable(layout.resources / "InfoPlist.loctable");
    const QList<Localization> available
        = localizationsOf(localizedFolders(layout.resources) + compiled.keys());
    for (const QString &wanted : languages + QStringList{developmentRegion, u"Base"_s}) {
        for (const Localization &language : matches(available, wanted)) {
            QVariantMap fromCompiled = compiled.value(language.name).toMap();
            if (!fromCompiled.isEmpty())
                return fromCompiled;
            const std::string folder = (language.name + u".lproj"_s).toStdString();
            QVariantMap table = readBundleTable(layout.resources / folder / "InfoPlist.strings");
            if (!table.isEmpty())
                return table;
        }
    }
    return {};
}

} // namespace zorvane::platform::simulated
