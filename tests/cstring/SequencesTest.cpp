// Random operations over strings that share buffers, held against a model after every step.
#include "tests/cstring/StringModel.h"

#include <gtest/gtest.h>

#include <random>

namespace {

struct RandomNumbers {
    std::mt19937 random;
    std::size_t Next(std::size_t bound) { return random() % bound; }
};

TEST(StringSequences, EveryStepAgreesWithTheModelOfTextCountsAndRoom) {
    for (unsigned int seed = 0; seed < 20; ++seed) {
        RandomNumbers numbers{std::mt19937(seed)};
        StringModel::Sequence sequence(numbers);
        for (int step = 0; step < 10000; ++step) {
            ASSERT_TRUE(sequence.Step()) << "seed " << seed << ", step " << step;
        }
    }
}

}  // namespace
