// Feeds a fuzz target every file of a folder, and each small one blown up to the size of the
// largest input; stands in for libFuzzer where that is not built in.

#include "fuzz/target.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace
{

constexpr std::size_t largestInput = 1'000'000;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__OPTIMIZE__)
// Sanitizers make everything several times slower, the one for threads most of all, and keep much
// beside the program's own memory; a build that is not optimised is slow as well.
#ifdef __SANITIZE_THREAD__
constexpr double mostSeconds = 60;
#else
constexpr double mostSeconds = 10;
#endif
constexpr long mostKilobytes = 2'000'000;
#else
constexpr double mostSeconds = 1;
constexpr long mostKilobytes = 256'000;
#endif

std::string contentOf(const std::filesystem::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/** As often the same as there is room for. The elements of a JSON array become a longer one. */
std::string blownUp(const std::string &seed)
{
    const bool isArray = seed.size() > 2 && seed.front() == '[' && seed.back() == ']';
    const std::string part = isArray ? seed.substr(1, seed.size() - 2) + ',' : seed + '\n';
    std::string result = isArray ? "[" : "";
    while (result.size() + part.size() < largestInput)
        result += part;
    if (isArray)
        result.back() = ']';
    return result;
}

/** False if it takes too long; only the program's own time counts. */
bool feed(const std::string &bytes, const std::string &name)
{
    // A copy of its own length, so that a sanitizer sees every byte read behind it.
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    const std::clock_t start = std::clock();
    LLVMFuzzerTestOneInput(input.data(), input.size());
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    if (seconds > mostSeconds)
        std::printf("%s takes %.1f s\n", name.c_str(), seconds);
    return seconds <= mostSeconds;
}

long peakKilobytes()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
#ifdef __APPLE__
    return usage.ru_maxrss / 1000; // bytes there
#else
    return usage.ru_maxrss;
#endif
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    const long before = peakKilobytes();
    int count = 0;
    bool isGood = true;
    for (const auto &entry : std::filesystem::directory_iterator(argv[1])) {
        const std::string seed = contentOf(entry.path());
        const std::string name = entry.path().filename().string();
        isGood = feed(seed, name) && isGood;
        if (seed.size() < largestInput / 2)
            isGood = feed(blownUp(seed), name + ", blown up,") && isGood;
        ++count;
    }
    const long grown = peakKilobytes() - before;
    std::printf("%d inputs, %ld MB at most\n", count, grown / 1000);
    return count > 0 && isGood && grown < mostKilobytes ? 0 : 1;
}
