// Part of every program that is built for the thread sanitizer, in place of the sanitizer's
// clone().
//
// QProcess starts a program from a child that shares our memory until it runs it. The sanitizer
// takes such a child for a fork of a program with threads, and from then on hears of no lock in the
// thread whose state the two share: our own. The C library's clone() does not touch that state.
// Like that one, this reads all that may follow, whether it was passed or not.

#include <cstdarg>
#include <cstdlib>
#include <sched.h>
#include <sys/types.h>

// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl*, cppcoreguidelines-pro-type-vararg)

extern "C" int __clone(int (*run)(void *), void *stack, int flags, void *argument, ...) noexcept;

extern "C" int clone(int (*run)(void *), void *stack, int flags, void *argument, ...) noexcept
{
    // A child with memory of its own would need what the sanitizer does for a fork.
    if ((flags & CLONE_VM) == 0)
        std::abort();
    va_list rest;
    va_start(rest, argument);
    pid_t *const parent = va_arg(rest, pid_t *);
    void *const localStorage = va_arg(rest, void *);
    pid_t *const child = va_arg(rest, pid_t *);
    va_end(rest);
    return __clone(run, stack, flags, argument, parent, localStorage, child);
}

// NOLINTEND(bugprone-reserved-identifier, cert-dcl*, cppcoreguidelines-pro-type-vararg)
