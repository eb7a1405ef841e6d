#include "bench/large_bundle.h"

#include "tests/bundle_files/bundle_files.h"
#include "tests/signed_code/signed_code.h"

#include <array>

using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace zorvane::bench
{

namespace
{

constexpr int fileCount = 50'000;
constexpr int nestedBundles = 100;
constexpr int plainExecutables = 200;
constexpr int helperScripts = 500;
constexpr int filesPerFolder = 9;

QByteArray program(int number)
{
    const QByteArray identifier = "com.example.helper" + QByteArray::number(number);
    // A real program's size, so that its signature stands away from its beginning.
    return machO({.signature = signature({.identifier = identifier, .team = "ABCDE12345"}),
        .commands = loadCommand(0x19, 32 * 1024)});
}

/** Writes the parts that can be started; their number. */
int writeExecutables(const fs::path &contents)
{
    int files = 0;
    const auto add = [&](const fs::path &path, const QByteArray &bytes) {
        writeFile(path, bytes, Mode::Executable);
        ++files;
    };
    for (int i = 0; i < nestedBundles; ++i) {
        const std::string name = "Helper" + std::to_string(i);
        const fs::path bundle = i % 2 == 1 ? contents / "XPCServices" / (name + ".xpc")
                                           : contents / "Helpers" / (name + ".app");
        writeInformation(bundle, "com.example." + QByteArray::fromStdString(name), "run");
        ++files;
        add(bundle / "Contents" / "MacOS" / "run", program(i));
    }
    const std::array places{"MacOS", "Helpers", "Library/LaunchAgents", "Library/LaunchServices"};
    for (int i = 0; i < plainExecutables; ++i) {
        add(contents / places[static_cast<size_t>(i) % places.size()]
                / ("tool" + std::to_string(i)),
            program(nestedBundles + i));
    }
    for (int i = 0; i < helperScripts; ++i)
        add(contents / "MacOS" / ("script" + std::to_string(i)), "#!/bin/sh\nexit 0\n");
    return files;
}

} // namespace

void writeLargeBundle(const fs::path &bundle)
{
    const fs::path contents = bundle / "Contents";
    writeInformation(bundle, "com.example.Large", "tool0");
    int files = 1 + writeExecutables(contents);
    for (int folder = 0; files < fileCount; ++folder) {
        const fs::path path = contents / "Frameworks" / ("F" + std::to_string(folder % 40))
            / "Resources" / ("group" + std::to_string(folder / 40 % 12))
            / ("part" + std::to_string(folder));
        for (int i = 0; i < filesPerFolder && files < fileCount; ++i, ++files)
            writeFile(path / ("resource" + std::to_string(i) + ".dat"), "x");
    }
}

void writeSmallBundle(const fs::path &bundle, int number)
{
    writeInformation(bundle, "com.example.application" + QByteArray::number(number), "run");
    writeFile(bundle / "Contents" / "MacOS" / "run", program(number), Mode::Executable);
}

} // namespace zorvane::bench
