#pragma once

namespace zorvane::platform
{

/**
 * Has the system run the update agent from time to time from now on, where that is for the program
 * to ask. Only for a program that is installed, which the caller has to know: the system remembers
 * where the program stands. Does nothing where it has been asked already, where the user has
 * forbidden it, and where the installed package has seen to it. Main thread; failures are silent,
 * and the next start asks again.
 */
void requestBackgroundRuns();

} // namespace zorvane::platform
