#include "platform/simulated/static_code.h"

#include "app/records/paths.h"
#include "platform/simulated/bundle_layout.h"
#include "platform/simulated/property_list.h"

#include <QVariant>

using namespace Qt::StringLiterals;

namespace zorvane::platform::simulated
{

namespace
{

using std::filesystem::path;

bool isThere(const path &item)
{
    std::error_code error;
    return std::filesystem::exists(item, error);
}

bool isFile(const path &item)
{
    std::error_code error;
    return std::filesystem::is_regular_file(item, error);
}

/** A bundle as its code is looked for. */
struct Place {
    BundleLayout layout;
    /** The folder whose layout that is: the current version of a versioned bundle. */
    path root;
    /** Where executables and the signature are kept. */
    path support;
    QVariantMap information;
};

std::optional<Place> placeOf(const path &bundle)
{
    const auto folders = bundleFolders(bundle);
    if (!folders)
        return std::nullopt;
    path root = bundle;
    if (!folders->contents && !folders->supportFiles && folders->versions
        && isThere(*folders->versions / "Current"))
        root = *folders->versions / "Current";
    const auto layout = bundleLayout(root);
    if (!layout)
        return std::nullopt;
    // The information may stand among the resources; nothing else of interest here does.
    const bool isAmongResources = layout->information == layout->resources;
    return Place{*layout, root, isAmongResources ? root : layout->information,
        readBundleInformation(*layout)};
}

/** The file @p name below @p folder, if there is one; a name with slashes may lead elsewhere. */
std::optional<path> fileBelow(const path &folder, const QString &name)
{
    // A file name ends at a zero character, so it would stand for another one.
    if (name.isEmpty() || name.contains(QChar::Null))
        return std::nullopt;
    path file = folder;
    file += "/" + name.toStdString();
    return isFile(file) ? std::optional(std::move(file)) : std::nullopt;
}

QString executableName(const Place &place, const path &bundle)
{
    QVariant value = place.information.value(u"CFBundleExecutable"_s);
    if (!value.isValid())
        value = place.information.value(u"NSExecutable"_s);
    if (const auto name = textOf(value); name && !name->isEmpty())
        return *name;
    return records::lastPathComponentWithoutExtension(QString::fromStdString(bundle.string()));
}

std::optional<path> mainExecutable(const Place &place, const path &bundle)
{
    const QString name = executableName(place, bundle);
    for (const path &folder : {place.support / "MacOS", place.support, place.root}) {
        if (auto file = fileBelow(folder, name))
            return file;
    }
    return std::nullopt;
}

/** The only installer script of @p folder; nothing if there is none or more than one. */
std::optional<path> installerScript(const path &folder)
{
    std::optional<path> script;
    std::error_code error;
    for (std::filesystem::directory_iterator item(folder, error), end; !error && item != end;
         item.increment(error)) {
        if (item->path().extension() != ".dist")
            continue;
        if (script)
            return std::nullopt;
        script = item->path();
    }
    return script;
}

std::optional<path> infoPlist(const Place &place)
{
    for (const char *name : {"Info-macos.plist", "Info.plist"}) {
        if (isFile(place.layout.information / name))
            return place.layout.information / name;
    }
    return std::nullopt;
}

std::optional<path> codeFile(const Place &place, const path &bundle)
{
    if (auto file = mainExecutable(place, bundle))
        return file;
    const QVariant page = place.information.value(u"MainHTML"_s);
    if (page.isValid())
        return fileBelow(place.support, textOf(page).value_or(QString()));
    if (auto file = infoPlist(place))
        return file;
    return installerScript(place.support);
}

std::optional<BundleCode> codeOf(const Place &place, const path &bundle)
{
    auto file = codeFile(place, bundle);
    if (!file)
        return std::nullopt;
    return BundleCode{std::move(*file), place.support / "_CodeSignature"};
}

} // namespace

std::optional<BundleCode> bundleCode(const path &bundle)
{
    const auto place = placeOf(bundle);
    return place ? codeOf(*place, bundle) : std::nullopt;
}

std::optional<BundleCode> bundleOfMainExecutable(const path &file)
{
    const path folder = file.parent_path();
    const path bundle = folder.filename() == "MacOS" ? folder.parent_path().parent_path() : folder;
    const auto place = placeOf(bundle);
    // Every folder could pass for a flat bundle, so such a one has to say something of itself.
    if (!place || (place->layout.information == bundle && place->information.isEmpty()))
        return std::nullopt;
    auto code = codeOf(*place, bundle);
    return code && code->file == file ? code : std::nullopt;
}

} // namespace zorvane::platform::simulated
