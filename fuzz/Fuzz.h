// What properties have: their entry point, which libFuzzer and Main.cpp call alike, their check, and a way to read
// the input as choices.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the run where a property does not hold; whoever calls the property then shows the input.
inline void Require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!holds) {
        std::fprintf(stderr, "%s:%d: the property does not hold\n", file, line);
        std::abort();
    }
}

/// The input as a row of choices; zeros when it has ended.
class Choices {
public:
    Choices(const std::uint8_t* data, std::size_t size) : m_Data(data), m_Left(size) {}
    [[nodiscard]] bool IsEmpty() const { return m_Left == 0; }

    template <class Value>
    Value Take() {
        Value value{};
        const std::size_t size = std::min(sizeof value, m_Left);
        std::memcpy(&value, m_Data, size);
        m_Data += size;
        m_Left -= size;
        return value;
    }
    unsigned Below(unsigned limit) { return Take<std::uint8_t>() % limit; }
    char OneOf(std::string_view letters) { return letters[Below(static_cast<unsigned>(letters.size()))]; }

private:
    const std::uint8_t* m_Data;
    std::size_t m_Left;
};
