#pragma once

#include "platform/byte_source.h"

#include <filesystem>

namespace zorvane::inspection
{

/**
 * True if the file is a Mach-O image of the type "executable": a program rather than a library, a
 * plug-in or an object file. Of a universal file the first slice decides. Reads 32 bytes from the
 * front and 32 from the first slice at most; whatever cannot be read, a symbolic link too, is no
 * executable. Safe to use from any thread; blocks on the disk. The format is that of <mach-o/fat.h>
 * and <mach-o/loader.h>.
 */
[[nodiscard]] bool isMainExecutableImage(const std::filesystem::path &path);

/** The same for bytes that are open already. */
[[nodiscard]] bool isMainExecutableImage(platform::ByteSource &source);

} // namespace zorvane::inspection
