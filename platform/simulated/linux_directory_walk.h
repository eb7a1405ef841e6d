#pragma once

#include "platform/directory_walk.h"

namespace zorvane::platform::simulated
{

/**
 * Walks folders by their descriptors. Kinds come from the directory entries, not from a look at
 * each file; other file systems mounted below the root are visited and not entered. A few threads
 * share the reading, because the system takes most of the time for each folder by itself. Few
 * descriptors are open at a time however deep the folders are.
 */
class LinuxDirectoryWalk final : public DirectoryWalk
{
public:
    void walk(const std::filesystem::path &root, const Visitor &visit) const override;
};

} // namespace zorvane::platform::simulated
