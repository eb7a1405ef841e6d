#include "ui/fonts.h"

namespace zorvane::ui
{

std::future<void> readFontsAhead()
{
    return {};
}

} // namespace zorvane::ui
