#include "inspection/helper_candidates.h"

#include "app/records/paths.h"
#include "inspection/executable_image.h"

#include <algorithm>
#include <string>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace zorvane::inspection
{

namespace
{

bool isNestedBundle(std::string_view path)
{
    const std::string_view name = path.substr(path.rfind('/') + 1);
    // Most folders have no extension, and there may be many thousands.
    if (name.find('.') == std::string_view::npos)
        return false;
    const QString text = QString::fromUtf8(name.data(), qsizetype(name.size()));
    return nestedBundleExtensions().contains(records::pathExtension(text).toLower());
}

/** @p inner is a path from the bundle on, with its leading slash. */
bool isInHelperDirectory(std::string_view inner)
{
    return std::ranges::any_of(embeddedHelperDirectories,
        [inner](std::string_view directory) { return inner.starts_with(directory); });
}

/** Asked of files in helper folders only, the cheap question first. */
bool isProgram(const std::string &path)
{
    return ::access(path.c_str(), X_OK) == 0 && isMainExecutableImage(path);
}

} // namespace

const QSet<QString> &nestedBundleExtensions()
{
    static const QSet<QString> extensions{u"app"_s, u"xpc"_s, u"appex"_s, u"systemextension"_s};
    return extensions;
}

std::vector<std::filesystem::path> helperCandidates(
    const platform::DirectoryWalk &walk, const std::filesystem::path &bundle)
{
    const size_t prefix = bundle.native().size();
    std::vector<std::filesystem::path> result;
    walk.walk(bundle, [&](std::string_view path, platform::ItemKind kind) {
        switch (kind) {
        case platform::ItemKind::Directory:
            if (isNestedBundle(path))
                result.emplace_back(path);
            break;
        case platform::ItemKind::RegularFile:
            if (isInHelperDirectory(path.substr(prefix)) && isProgram(std::string(path)))
                result.emplace_back(path);
            break;
        case platform::ItemKind::Other:
            break;
        }
    });
    return result;
}

} // namespace zorvane::inspection
