#include "ui/desktop/conventions.h"

namespace zorvane::ui
{

DesktopConventions desktopConventions()
{
    return {};
}

} // namespace zorvane::ui
