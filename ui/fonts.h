#pragma once

#include <future>

namespace zorvane::ui
{

/**
 * Has what the desktop says of fonts read on a thread of its own, where that is left to each
 * program: the first text would wait for it otherwise. Before the application object, which takes
 * as long to be made. The end of what it returns waits for that thread.
 */
[[nodiscard]] std::future<void> readFontsAhead();

} // namespace zorvane::ui
