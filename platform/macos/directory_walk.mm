#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"

#include <string>

namespace zorvane::platform::macos
{

namespace
{

/** Names items by the root as it was given: the enumerator may resolve links on the way to it. */
class Naming
{
public:
    explicit Naming(const std::filesystem::path &root)
        : m_given(root.native())
    {
        std::error_code failed;
        const auto resolved = std::filesystem::canonical(root, failed);
        m_resolved = failed ? m_given : resolved.native();
    }

    /** Nothing for what does not lie below the root. */
    [[nodiscard]] std::optional<std::string> name(const std::string &item) const
    {
        if (liesBelow(item, m_given))
            return item;
        if (liesBelow(item, m_resolved))
            return m_given + item.substr(m_resolved.size());
        return std::nullopt;
    }

private:
    static bool liesBelow(const std::string &item, const std::string &root)
    {
        return item.size() > root.size() && item.starts_with(root) && item[root.size()] == '/';
    }

    const std::string m_given;
    std::string m_resolved;
};

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
            NSArray<NSURLResourceKey> *const keys = @[ NSURLIsDirectoryKey, NSURLIsRegularFileKey ];
            NSDirectoryEnumerator<NSURL *> *const items =
                [NSFileManager.defaultManager enumeratorAtURL:urlOf(root)
                                   includingPropertiesForKeys:keys
                                                      options:NSDirectoryEnumerationSkipsHiddenFiles
                                                 errorHandler:nil];
            const Naming naming(root);
            while (visitNext(items, keys, naming, visit)) { }
        }
    }

private:
    /** With a pool of its own for each item: a bundle may hold hundreds of thousands. */
    static bool visitNext(NSDirectoryEnumerator<NSURL *> *items, NSArray<NSURLResourceKey> *keys,
        const Naming &naming, const Visitor &visit)
    {
        @autoreleasepool {
            NSURL *const item = [items nextObject];
            if (item == nil)
                return false;
            if (const auto path = pathOf(item)) {
                if (const auto name = naming.name(path->native()))
                    visit(*name, kindOf(item, keys));
            }
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
