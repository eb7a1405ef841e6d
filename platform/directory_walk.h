#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

namespace zorvane::platform
{

/** What an item is in itself; a symbolic link is Other, whatever it points to. */
enum class ItemKind { Directory, RegularFile, Other };

/** Walks folders. Safe to use from any thread, several walks at once; blocks on the disk. */
class DirectoryWalk
{
public:
    /** Called for each item with its full path, in the file system's own encoding; once at a time,
     * before walk() returns, on any thread. */
    using Visitor = std::function<void(std::string_view path, ItemKind kind)>;

    virtual ~DirectoryWalk() = default;

    /**
     * Visits everything below @p root, at any depth, a folder before what it holds; siblings come
     * in no stated order. Hidden items are skipped with all below them, symbolic links are visited
     * and not followed, what cannot be read is left out. The paths begin with @p root as it was
     * given.
     */
    virtual void walk(const std::filesystem::path &root, const Visitor &visit) const = 0;
};

} // namespace zorvane::platform
