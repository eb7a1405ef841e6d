#pragma once

#include <filesystem>
#include <QByteArray>
#include <QDateTime>

namespace zorvane::app
{

/**
 * A folder of stored lists that could not be read, kept before they were overwritten, so that a
 * person can get them back. Every failure is silent. Any thread; blocks on the disk.
 */
class SetAsideLists
{
public:
    /** Keeps nothing if @p folder is empty. The folder is made when it is first needed. */
    explicit SetAsideLists(std::filesystem::path folder);

    /**
     * Keeps @p bytes in a file that is named for @p now, unless a file holds them already, and
     * beside it the four other files with the latest dates.
     */
    void keep(const QByteArray &bytes, const QDateTime &now) const;

private:
    std::filesystem::path m_folder;
};

} // namespace zorvane::app
