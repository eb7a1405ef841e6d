#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

/**
 * @file
 * Which files stand for the code at a path, by the rules of the platform's code-signing library and
 * of its bundles. Any thread; blocks on the disk.
 */
namespace zorvane::platform::simulated
{

/** The code of a bundle. */
struct BundleCode {
    /** The file whose signature is the bundle's: usually its main executable. */
    std::filesystem::path file;
    /** The folder for the signature of a file that cannot carry one; need not exist. */
    std::filesystem::path signatureFolder;
};

/**
 * The code of the bundle at @p bundle: its main executable; without one the page that it shows,
 * else its Info.plist, else its only installer script (*.dist). Nothing if it has none of them.
 */
[[nodiscard]] std::optional<BundleCode> bundleCode(const std::filesystem::path &bundle);

/** The bundle around @p file, if that is its main executable; else nothing. */
[[nodiscard]] std::optional<BundleCode> bundleOfMainExecutable(const std::filesystem::path &file);

} // namespace zorvane::platform::simulated
