// Abuse at random: drags and renames in the real component on a scratch folder of drive C.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tests/soak/drag_soak.h"

namespace {

struct Options {
    unsigned seed = 1;
    int count = 200;
    int minutes = 0;  // 0: until `count` is reached
};

Options g_options;

bool Read(int argc, char** argv)
{
    for (int at = 1; at + 1 < argc; at += 2) {
        const std::string_view name = argv[at];
        const long value = std::strtol(argv[at + 1], nullptr, 10);
        if (name == "--seed")
            g_options.seed = static_cast<unsigned>(value);
        else if (name == "--count")
            g_options.count = static_cast<int>(value);
        else if (name == "--minutes")
            g_options.minutes = static_cast<int>(value);
        else
            return false;
    }
    return argc % 2 == 1;
}

}  // namespace

namespace sylvex::test {

/// Rounds of a few steps, each on a branch of its own that its own seed gives, so that a round can be repeated alone.
TEST(Soak, Drags)
{
    constexpr int kStepsOfARound = 10;
    const auto end = GetTickCount64() + static_cast<ULONGLONG>(g_options.minutes) * 60000;
    SoakCount count;
    unsigned seed = g_options.seed;
    const auto goesOn = [&] { return g_options.minutes > 0 ? GetTickCount64() < end : count.steps < g_options.count; };
    for (; goesOn(); ++seed) {
        const int left = g_options.minutes > 0 ? kStepsOfARound : g_options.count - count.steps;
        const int failures = count.failures;
        std::printf("Round with seed %u\n", seed);
        DragSoak(seed).Run(std::min(kStepsOfARound, left), count);
        if (count.failures > failures)
            ADD_FAILURE() << "Repeat it by: ./sylvex soak drags --seed " << seed << " --count " << kStepsOfARound;
    }
    std::printf("%d steps: %d moved, %d renamed, %d refused with a message, %d without effect, %d failed\n",
                count.steps, count.moved, count.renamed, count.told, count.silent, count.failures);
    const bool telling = count.steps >= 100;
    EXPECT_TRUE(!telling || 8 * (count.moved + count.renamed) > count.steps) << "too little has happened";
}

}  // namespace sylvex::test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!Read(argc, argv)) return std::fprintf(stderr, "sylvex_soak [--seed N] [--count N] [--minutes N]\n"), 2;
    return RUN_ALL_TESTS();
}
