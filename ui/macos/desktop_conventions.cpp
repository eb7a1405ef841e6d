#include "ui/desktop_conventions.h"

#include "ui/macos/window_chrome.h"

namespace zorvane::ui
{

DesktopConventions desktopConventions()
{
    return {.endsWithMainWindow = false, .frameMainWindow = &macos::hideTitleBar};
}

} // namespace zorvane::ui
