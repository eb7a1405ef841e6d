#pragma once

#include <future>

namespace zorvane::ui
{

/**
 * Has what the desktop says of fonts read on a thread of its own, where that is left to each
 * program: the first text would wait for it otherwise. Before the application object, which mostly
 * waits for the display; of the environment that takes out only what no font is asked for. The end
 * of what this returns waits for the thread.
 */
[[nodiscard]] std::future<void> readFontsAhead();

} // namespace zorvane::ui
