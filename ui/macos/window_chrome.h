#pragma once

#include <QWindow>

namespace zorvane::ui::macos
{

/**
 * Lets the window's content reach under its title bar, of which only the buttons stay. Makes the
 * window's system part if there is none; to be called again for a new one. Main thread.
 */
void hideTitleBar(QWindow &window);

} // namespace zorvane::ui::macos
