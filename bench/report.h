#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <vector>

/**
 * @file
 * How a benchmark measures and says what it found: one line a measure, tab-separated, which
 * scripts/bench makes a table of.
 */
namespace zorvane::bench
{

/** Keeps the compiler from leaving out what makes @p value. */
template <typename Value>
void keep(const Value &value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

struct Pair {
    double measured;
    double reference;
};

inline double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/** How long a piece of work takes. */
template <typename Work>
double milliseconds(Work &&work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> passed
        = std::chrono::steady_clock::now() - start;
    return passed.count();
}

/** Milliseconds of two pieces of work, the median of @p rounds, taken in turns. */
template <typename Measured, typename Reference>
Pair compare(int rounds, Measured measured, Reference reference)
{
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(milliseconds(measured));
        theirs.push_back(milliseconds(reference));
    }
    return {median(ours), median(theirs)};
}

/** Prints one measure: its ratio must not be above @p goal. */
inline void report(std::string_view what, std::string_view against, const Pair &pair,
    std::string_view unit, double goal)
{
    std::printf("%.*s\t%.*s\t%.4g\t%.4g\t%.*s\t%g\n", static_cast<int>(what.size()), what.data(),
        static_cast<int>(against.size()), against.data(), pair.measured, pair.reference,
        static_cast<int>(unit.size()), unit.data(), goal);
}

} // namespace zorvane::bench
