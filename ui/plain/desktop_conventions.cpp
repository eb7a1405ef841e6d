#include "ui/desktop_conventions.h"

namespace zorvane::ui
{

DesktopConventions desktopConventions()
{
    return {};
}

} // namespace zorvane::ui
