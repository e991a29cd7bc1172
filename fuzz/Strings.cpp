// Property: whatever operations strings go through that share, lock and edit one another, text, counts
// and room stay those of a plain model.
#include "fuzz/Fuzz.h"
#include "tests/cstring/StringModel.h"

namespace {

struct FuzzNumbers {
    const std::uint8_t* next;
    const std::uint8_t* end;

    std::size_t Next(std::size_t bound) {
        std::size_t number = 0;
        for (std::size_t range = 1; range < bound && next != end; range <<= 8) {
            number = number << 8 | *next++;
        }
        return number % bound;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzNumbers numbers{data, data + size};
    StringModel::Sequence sequence(numbers);
    while (numbers.next != numbers.end) {
        Require(sequence.Step());
    }
    return 0;
}
