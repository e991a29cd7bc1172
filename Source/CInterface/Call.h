// What every function of <Lum/lum.h> is made of: a text that comes in, a text that goes out, and the one place that
// turns exceptions into statuses.
#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include <Lum/lum.h>

namespace Lum::Internal {

/// A text that comes in; nothing is copied.
inline std::string_view TextOf(const char* text, std::size_t size) noexcept {
    if (text == nullptr) {
        return {};
    }
    return size == LUM_NUL_TERMINATED ? std::string_view(text) : std::string_view(text, size);
}

inline std::string_view TextOf(const char* text) noexcept { return TextOf(text, LUM_NUL_TERMINATED); }

/// The status that `body` answers, or that of what it throws. Nothing leaves the library but through here.
template <class Body>
lum_status Guarded(const Body& body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return LUM_NO_MEMORY;
    } catch (const std::length_error&) {
        return LUM_NO_MEMORY;
    } catch (...) {
        return LUM_FAILED;
    }
}

/// Writes to a result that the caller must have given, and may not care for.
template <class Value>
void Store(Value* target, Value value) noexcept {
    if (target != nullptr) {
        *target = value;
    }
}

/// The caller's buffer, of bytes or of UTF-16 units.
template <class Unit>
struct Buffer {
    Unit* units;
    std::size_t capacity;
    std::size_t* size;

    /// Writes as much of `text` as fits, always with a 0 behind it. Returns whether all of it fits.
    template <class Character>
    [[nodiscard]] bool Write(std::basic_string_view<Character> text) const noexcept {
        Store(size, text.size());
        if (units == nullptr || capacity == 0) {
            return false;
        }
        const std::size_t count = std::min(text.size(), capacity - 1);
        std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(count), units,
                       [](Character c) { return static_cast<Unit>(c); });
        units[count] = 0;
        return count == text.size();
    }
};

/// Writes the text that `body` leaves in its argument, and returns the status that it answers, or LUM_TRUNCATED. The
/// buffer is not touched before, so that it may overlap what `body` reads.
template <class Text = std::string, class Unit, class Body>
lum_status Answered(const Buffer<Unit>& buffer, const Body& body) noexcept {
    Text text;
    const lum_status status = Guarded([&] { return body(text); });
    if (status == LUM_NO_MEMORY || status == LUM_FAILED || status == LUM_BAD_ARGUMENT) {
        text.clear();
    }
    const bool fits = buffer.Write(std::basic_string_view<typename Text::value_type>(text));
    // What failed without a text has none to cut.
    return fits || (text.empty() && status != LUM_OK) ? status : LUM_TRUNCATED;
}

}  // namespace Lum::Internal
