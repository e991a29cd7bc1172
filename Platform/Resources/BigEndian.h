// The numbers of the resource layout, which are all big-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Resources {

/// The number of `size` bytes at `offset`, which must all be inside.
inline std::uint32_t ReadNumber(std::string_view bytes, std::size_t offset, std::size_t size) noexcept {
    std::uint32_t number = 0;
    for (const char byte : std::string_view(bytes.data() + offset, size)) {
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}
inline std::uint32_t Read16(std::string_view bytes, std::size_t offset) noexcept {
    return ReadNumber(bytes, offset, 2);
}
inline std::uint32_t Read24(std::string_view bytes, std::size_t offset) noexcept {
    return ReadNumber(bytes, offset, 3);
}
inline std::uint32_t Read32(std::string_view bytes, std::size_t offset) noexcept {
    return ReadNumber(bytes, offset, 4);
}

/// Appends the low `size` bytes of a number.
inline void AppendNumber(std::string& bytes, std::uint64_t number, std::size_t size) {
    while (size-- > 0) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(number >> (8 * size))));
    }
}
inline void Append16(std::string& bytes, std::uint64_t number) { AppendNumber(bytes, number, 2); }
inline void Append24(std::string& bytes, std::uint64_t number) { AppendNumber(bytes, number, 3); }
inline void Append32(std::string& bytes, std::uint64_t number) { AppendNumber(bytes, number, 4); }

/// Whether [offset, offset + size) lies inside `whole` bytes.
constexpr bool IsInside(std::uint64_t offset, std::uint64_t size, std::uint64_t whole) noexcept {
    return offset <= whole && size <= whole - offset;
}

}  // namespace Resources
