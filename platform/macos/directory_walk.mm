#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"

namespace zorvane::platform::macos
{

namespace
{

/**
 * The root as it was given, and the last @p level parts of @p item. What the enumerator puts before
 * these need not be the root byte by byte: it may resolve links on the way, and writes accented
 * letters in another form.
 */
std::filesystem::path nameBelow(
    const std::filesystem::path &root, const std::filesystem::path &item, NSUInteger level)
{
    auto part = item.end();
    for (; level > 0 && part != item.begin(); --level)
        --part;
    std::filesystem::path name = root;
    for (; part != item.end(); ++part)
        name /= *part;
    return name;
}

static_assert(NSDirectoryEnumerationSkipsHiddenFiles == 1 << 2);

/** A link is neither a directory nor a regular file here, and so is what cannot be asked. */
ItemKind kindOf(NSURL *item, NSArray<NSURLResourceKey> *keys)
{
    NSDictionary<NSURLResourceKey, id> *const values = [item resourceValuesForKeys:keys error:nil];
    if ([values[NSURLIsDirectoryKey] boolValue])
        return ItemKind::Directory;
    return [values[NSURLIsRegularFileKey] boolValue] ? ItemKind::RegularFile : ItemKind::Other;
}

class FoundationDirectoryWalk final : public DirectoryWalk
{
public:
    void walk(const std::filesystem::path &root, const Visitor &visit) const override
    {
        @autoreleasepool {
            NSURL *const url = urlOf(root);
            if (url == nil)
                return;
            NSArray<NSURLResourceKey> *const keys = @[ NSURLIsDirectoryKey, NSURLIsRegularFileKey ];
            NSDirectoryEnumerator<NSURL *> *const items =
                [NSFileManager.defaultManager enumeratorAtURL:url
                                   includingPropertiesForKeys:keys
                                                      options:NSDirectoryEnumerationSkipsHiddenFiles
                                                 errorHandler:nil];
            while (visitNext(items, keys, root, visit)) { }
        }
    }

private:
    /** With a pool of its own for each item: a bundle may hold hundreds of thousands. */
    static bool visitNext(NSDirectoryEnumerator<NSURL *> *items, NSArray<NSURLResourceKey> *keys,
        const std::filesystem::path &root, const Visitor &visit)
    {
        @autoreleasepool {
            NSURL *const item = [items nextObject];
            if (item == nil)
                return false;
            if (const auto path = pathOf(item))
                visit(nameBelow(root, *path, items.level).native(), kindOf(item, keys));
            return true;
        }
    }
};

} // namespace

std::unique_ptr<DirectoryWalk> makeDirectoryWalk()
{
    return std::make_unique<FoundationDirectoryWalk>();
}

} // namespace zorvane::platform::macos
