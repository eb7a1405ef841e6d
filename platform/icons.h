#pragma once

#include <filesystem>
#include <QImage>

namespace zorvane::platform
{

/** The icons that the desktop shows for files. Safe to use from any thread; blocks on the disk. */
class Icons
{
public:
    virtual ~Icons() = default;

    /**
     * The icon of the file or bundle at @p path: the representation that suits @p side by @p side
     * pixels best, at its own size or drawn at that one. A null image if there is none.
     */
    [[nodiscard]] virtual QImage icon(const std::filesystem::path &path, int side) const = 0;
};

} // namespace zorvane::platform
