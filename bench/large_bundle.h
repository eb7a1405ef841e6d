#pragma once

#include <filesystem>

namespace zorvane::bench
{

/**
 * Writes an application of 50,000 files in folders as deep as those of large real ones, 300 of them
 * signed programs.
 */
void writeLargeBundle(const std::filesystem::path &bundle);

/** Writes an application of one signed program. */
void writeSmallBundle(const std::filesystem::path &bundle, int number);

} // namespace zorvane::bench
