// What the files about URIs share: statuses of URIs, and the ways to make one and to read one.
#pragma once

#include <memory>
#include <string>

#include <Lum/URIProblem.h>

#include "Source/CInterface/Call.h"
#include "Source/CInterface/URIObject.h"

namespace Lum::Internal {

static_assert(LUM_SCHEME_UNKNOWN - LUM_SCHEME_TOO_SHORT ==
              static_cast<int>(URIProblemCode::kSchemeUnknown) - static_cast<int>(URIProblemCode::kSchemeTooShort));

inline lum_status StatusOf(URIProblemCode code) noexcept {
    constexpr int first = LUM_SCHEME_TOO_SHORT - static_cast<int>(URIProblemCode::kSchemeTooShort);
    return code == URIProblemCode::kValid ? LUM_OK : static_cast<lum_status>(first + static_cast<int>(code));
}

/// Hands out a new URI that `body` fills, or null where `body` does not answer LUM_OK.
template <class Body>
lum_status Created(lum_uri** target, const Body& body) noexcept {
    if (target == nullptr) {
        return LUM_BAD_ARGUMENT;
    }
    // An input may be the object that the target still names: it is written last.
    lum_uri* made = nullptr;
    const lum_status status = Guarded([&] {
        auto object = std::make_unique<lum_uri>();
        const lum_status answer = body(*object);
        made = answer == LUM_OK ? object.release() : nullptr;
        return answer;
    });
    *target = made;
    return status;
}

/// Writes the text that `read` returns, which reads `uri`.
template <class Read>
lum_status AnsweredOf(const lum_uri* uri, const Buffer<char>& buffer, const Read& read) noexcept {
    return Answered(buffer, [&](std::string& text) {
        if (uri == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        text = read();
        return LUM_OK;
    });
}

}  // namespace Lum::Internal
