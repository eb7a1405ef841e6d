#include "ui/fonts.h"

#include <fontconfig/fontconfig.h>

namespace zorvane::ui
{

std::future<void> readFontsAhead()
{
    return std::async(std::launch::async, [] { FcInit(); });
}

} // namespace zorvane::ui
