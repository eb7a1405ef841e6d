// A second program that writes a preferences file as a filter extension may, or as badly as a
// broken one may, for tests.

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>

namespace
{

namespace fs = std::filesystem;

/** How long a whole file stands, so that readers of any speed find it now and then. */
constexpr auto rest = std::chrono::milliseconds(1);

void writeInPlace(const fs::path &file, const std::string &bytes)
{
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

void replace(const fs::path &file, const std::string &bytes)
{
    const fs::path beside = file.string() + ".new";
    writeInPlace(beside, bytes);
    fs::rename(beside, file);
}

void say(const char *word)
{
    std::puts(word);
    std::fflush(stdout);
}

/** Replaces, cuts off and damages the file in turns, until the program is killed. */
[[noreturn]] void writeForEver(
    const fs::path &file, const std::string &one, const std::string &other)
{
    for (;;) {
        replace(file, one);
        say("written");
        std::this_thread::sleep_for(rest);
        writeInPlace(file, other.substr(0, other.size() / 2));
        replace(file, other);
        std::this_thread::sleep_for(rest);
        writeInPlace(file, "damaged");
    }
}

std::string readAll(std::istream &in)
{
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

/**
 * FILE in-place|half|replace: writes what comes on standard input, the first half of it, or a new
 * file with it. FILE ever ONE OTHER: goes on writing what the files ONE and OTHER hold.
 */
int main(int argc, char *argv[])
{
    if (argc < 3)
        return 2;
    const fs::path file = argv[1];
    const std::string mode = argv[2];
    fs::create_directories(file.parent_path());
    if (mode == "ever" && argc == 5) {
        std::ifstream one(argv[3], std::ios::binary);
        std::ifstream other(argv[4], std::ios::binary);
        writeForEver(file, readAll(one), readAll(other));
    }
    const std::string bytes = readAll(std::cin);
    if (mode == "in-place")
        writeInPlace(file, bytes);
    else if (mode == "half")
        writeInPlace(file, bytes.substr(0, bytes.size() / 2));
    else if (mode == "replace")
        replace(file, bytes);
    else
        return 2;
    return 0;
}
