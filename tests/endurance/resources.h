#pragma once

#include <filesystem>
#include <iterator>
#include <malloc.h>

namespace zorvane::tests
{

/** What this process holds. Needs Linux and its C library. */
struct Resources {
    size_t heapBytes = 0;
    std::ptrdiff_t descriptors = 0;
    std::ptrdiff_t threads = 0;

    [[nodiscard]] static Resources now()
    {
        const auto heap = ::mallinfo2();
        return {heap.uordblks + heap.hblkhd, entries("/proc/self/fd"), entries("/proc/self/task")};
    }

private:
    static std::ptrdiff_t entries(const char *folder)
    {
        return std::distance(
            std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
    }
};

} // namespace zorvane::tests
