#include "fuzz/target.h"
#include "inspection/executable_image.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    zorvane::platform::MemorySource source({data, size});
    static_cast<void>(zorvane::inspection::isMainExecutableImage(source));
    return 0;
}
