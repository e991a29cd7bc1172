// One converter of the host's text encoding converter service, from one encoding to another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

namespace Mac {

/// How a conversion step ended. The last three stop at an element of the input, everything before it
/// being read and its text written.
enum class Outcome {
    kDone,        ///< All input is read.
    kFull,        ///< The next element does not fit the output.
    kMalformed,   ///< No text of the source encoding.
    kIncomplete,  ///< The input ends within an element.
    kUnmappable,  ///< The target encoding has no such character.
    kFailed,      ///< The service failed otherwise.
};

struct Step {
    Outcome outcome;
    std::size_t read;     ///< Bytes of the input.
    std::size_t written;  ///< Bytes of the output.
};

/// Owns the service's converter and disposes of it. Used by one thread at a time.
class TextConverter {
public:
    TextConverter() noexcept = default;
    /// Empty where the host has no such converter.
    TextConverter(std::uint32_t from, std::uint32_t to);
    TextConverter(TextConverter&& other) noexcept : m_Converter(std::exchange(other.m_Converter, nullptr)) {}
    TextConverter& operator=(TextConverter&& other) noexcept {
        std::swap(m_Converter, other.m_Converter);
        return *this;
    }
    ~TextConverter();

    explicit operator bool() const noexcept { return m_Converter != nullptr; }

    // The converter must not be empty.

    /// Converts what it can; keeps the shift state of both encodings from call to call.
    Step Convert(std::string_view input, std::span<char> output);
    /// Writes what returns the target to its initial state; nothing is read.
    Step Flush(std::span<char> output);
    /// Back to the state of a new converter, also after a failure.
    void Clear() noexcept;

private:
    void* m_Converter = nullptr;
};

}  // namespace Mac
