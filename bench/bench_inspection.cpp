#include "bench/large_bundle.h"
#include "bench/report.h"
#include "tests/bundle_files/bundle_files.h"

#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zorvane;
namespace fs = std::filesystem;

namespace
{

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
    const tests::ScratchFolder scratch;
    const fs::path bundle = scratch.path() / "Large.app";
    bench::writeLargeBundle(bundle);
    const auto inspect = [&] { run({ZORVANE_INSPECT, bundle.c_str()}); };
    const auto find = [&] { run({"find", bundle.c_str(), "-type", "f"}); };
    inspect();
    find();
    bench::report("inspection, 50,000 files, whole process", "find -type f",
        bench::compare(21, inspect, find), "ms", 0.8);
    return EXIT_SUCCESS;
}
