#pragma once

class QWindow;

namespace zorvane::ui
{

/** What is customary for the windows of a program on the desktop that it was built for. */
struct DesktopConventions {
    /**
     * Closing the main window ends the program, and the other windows with it. Where it does not,
     * the program goes on, and shows the main window again when it is called up without a window.
     */
    bool endsWithMainWindow = true;
    /**
     * Gives the main window the frame that programs have there. Called on the main thread whenever
     * it has come on screen, perhaps with a new native window behind it.
     */
    void (*frameMainWindow)(QWindow &window) = [](QWindow &) {};
};

/** Those of this desktop. */
[[nodiscard]] DesktopConventions desktopConventions();

} // namespace zorvane::ui
