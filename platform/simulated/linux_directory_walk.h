#pragma once

#include "platform/directory_walk.h"

namespace zorvane::platform::simulated
{

/**
 * Walks folders by their descriptors. Kinds come from the directory entries, not from a look at
 * each file. Folders that other file systems are mounted on are entered like all others; those
 * whose path is too long for the system are visited and left out. A few threads share the reading,
 * because the system takes most of the time for each folder by itself. Few descriptors are open at
 * a time however deep the folders are.
 */
class LinuxDirectoryWalk final : public DirectoryWalk
{
public:
    void walk(const std::filesystem::path &root, const Visitor &visit) const override;
};

} // namespace zorvane::platform::simulated
