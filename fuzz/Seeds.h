// For targets whose inputs have a layout that chance does not find: every so often the mutator starts
// anew from a text that the target makes itself.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t mostSize);

/// What LLVMFuzzerCustomMutator answers: a mutation of `data` or of a seed.
inline std::size_t MutateOrSeed(const std::vector<std::string>& seeds, std::uint8_t* data, std::size_t size,
                                std::size_t mostSize, unsigned number) {
    std::minstd_rand random(number);
    if (size <= 1 || random() % 64 == 0) {
        const std::string& seed = seeds[random() % seeds.size()];
        size = std::min(seed.size(), mostSize);
        std::copy_n(seed.begin(), size, data);
    }
    return LLVMFuzzerMutate(data, size, mostSize);
}
