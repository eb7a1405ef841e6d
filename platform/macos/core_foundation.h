#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <memory>
#include <type_traits>

namespace zorvane::platform::macos
{

/** Releases what a "create" or "copy" function of a C framework returned. */
struct CoreFoundationDeleter {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/** @p Reference is a framework's reference type, SecStaticCodeRef for example. */
template <typename Reference>
using CoreFoundationPointer
    = std::unique_ptr<std::remove_pointer_t<Reference>, CoreFoundationDeleter>;

} // namespace zorvane::platform::macos
