#pragma once

#include <future>

namespace zorvane::ui
{

/**
 * Has what the desktop says of fonts read on a thread of its own, where that is left to each
 * program: the first text would wait for it otherwise. After the application object, which still
 * changes the environment. The end of what it returns waits for that thread.
 */
[[nodiscard]] std::future<void> readFontsAhead();

} // namespace zorvane::ui
