#pragma once

#include "platform/byte_range.h"
#include "platform/simulated/signature_reading.h"

#include <optional>

/**
 * @file
 * The parts of Mach-O files that lead to a code signature. The formats are those of <mach-o/fat.h>
 * and <mach-o/loader.h>; the choices are the platform's code-signing library's, for a caller that
 * runs on arm64. The bytes may be hostile. Any thread, as far as the source below allows.
 */
namespace zorvane::platform::simulated
{

/**
 * True if @p file is a Mach-O image that is loaded into processes: a program, a library, a plug-in
 * or the like. Of a universal file the first slice alone decides; universal files with 64-bit
 * offsets are not recognised.
 */
[[nodiscard]] bool isMachO(const ByteRange &file);

/**
 * The image whose signature stands for the whole of @p file, up to the file's end: a thin file
 * itself; of a universal file the slice for arm64, else one for a variant of arm64, else the first.
 * Nothing if the universal header is damaged.
 */
[[nodiscard]] std::optional<ByteRange> representativeImage(const ByteRange &file);

/** The bytes that the first LC_CODE_SIGNATURE of @p image names. */
[[nodiscard]] Reading<ByteRange> embeddedSignature(const ByteRange &image);

} // namespace zorvane::platform::simulated
