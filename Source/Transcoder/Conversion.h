// The loop that converts a whole text piece by piece.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <string>
#include <string_view>

#include "Mac/TextConverter.h"

namespace Lum {

/// Converts `input`, with pieces of at most `kPieceBytes` bytes on their way. What precedes an element
/// that cannot be converted is kept, and the piece in which the conversion failed is there twice.
template <class Unit, std::size_t kPieceBytes>
std::basic_string<Unit> ConvertText(Mac::TextConverter& converter, std::string_view input) {
    std::array<Unit, kPieceBytes / sizeof(Unit)> piece;
    const std::span<char> room(reinterpret_cast<char*>(piece.data()), kPieceBytes);
    std::basic_string<Unit> result;
    const auto append = [&](std::size_t bytes) {
        if (bytes / sizeof(Unit) > result.max_size() - result.size()) {
            throw std::bad_alloc();
        }
        result.append(piece.data(), bytes / sizeof(Unit));
    };
    while (!input.empty()) {
        const Mac::Step step = converter.Convert(input, room);
        input.remove_prefix(step.read);
        const std::size_t units = step.written / sizeof(Unit);
        if (!input.empty() && result.capacity() - result.size() < units) {
            // The rest will take what this piece took, or a little more.
            const std::uint64_t rest = std::uint64_t{input.size()} * units / (step.read + 1);
            const std::uint64_t size = result.size() + units + rest + rest / 16 + 16;
            if (size < result.max_size()) {
                result.reserve(static_cast<std::size_t>(size));
            }
        }
        append(step.written);
        const bool isGoing = step.outcome == Mac::Outcome::kDone || step.outcome == Mac::Outcome::kFull;
        // A service that neither reads nor writes would keep us here for ever.
        if (!isGoing || (step.read == 0 && step.written == 0)) {
            append(step.written);  // Once more: callers rely on it.
            return result;
        }
    }
    append(converter.Flush(room).written);
    return result;
}

}  // namespace Lum
