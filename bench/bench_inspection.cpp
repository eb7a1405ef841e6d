#include "bench/report.h"
#include "tests/bundle_files/bundle_files.h"
#include "tests/signed_code/signed_code.h"

#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zorvane;
using namespace zorvane::tests;
namespace fs = std::filesystem;

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

/** An application of fileCount files in folders as deep as those of large real ones. */
void writeBundle(const fs::path &bundle)
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

/** Runs a program to its end, its output thrown away. */
void run(std::vector<const char *> arguments)
{
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = 0;
    const bool started = ::posix_spawnp(&child, arguments[0], &actions, nullptr,
                             const_cast<char *const *>(arguments.data()), environ)
        == 0;
    posix_spawn_file_actions_destroy(&actions);
    if (!started || ::waitpid(child, &status, 0) != child || status != 0)
        qFatal("%s failed", arguments[0]);
}

} // namespace

/** A large bundle inspected by a fresh process, against one that lists the same files. */
int main()
{
    const ScratchFolder scratch;
    const fs::path bundle = scratch.path() / "Large.app";
    writeBundle(bundle);
    const auto inspect = [&] { run({ZORVANE_INSPECT, bundle.c_str()}); };
    const auto find = [&] { run({"find", bundle.c_str(), "-type", "f"}); };
    inspect();
    find();
    bench::report("inspection, 50,000 files, whole process", "find -type f",
        bench::compare(21, inspect, find), "ms", 0.8);
    return EXIT_SUCCESS;
}
