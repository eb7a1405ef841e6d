#pragma once

#include "platform/icons.h"

namespace zorvane::platform::simulated
{

/**
 * The icons that bundles carry as files: an icon family or a PNG, named by "CFBundleIconFile" or
 * "CFBundleIconName". There is no stand-in for a bundle without one.
 */
class FileIcons final : public Icons
{
public:
    [[nodiscard]] QImage icon(const std::filesystem::path &path, int side) const override;
};

} // namespace zorvane::platform::simulated
