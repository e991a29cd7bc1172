// A string object as its own room sees it.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <utility>

#include "Platform/CoreFoundation/CFObject.h"
#include "Platform/CoreFoundation/CFString.h"

namespace CoreFoundation {

class String final : public Object {
public:
    /// Units that somebody else keeps.
    explicit String(std::span<const UniChar> units) noexcept : Object(Kind::String), m_Units(units) {}
    /// The first `size` units of a block, which becomes the string's.
    String(std::unique_ptr<UniChar[]> units, std::size_t size) noexcept
        : Object(Kind::String), m_Units(units.get(), size), m_Owned(std::move(units)) {}

    [[nodiscard]] std::span<const UniChar> Units() const noexcept { return m_Units; }
    [[nodiscard]] CFStringRef Ref() const noexcept {
        return static_cast<CFStringRef>(static_cast<CFTypeRef>(static_cast<const Object*>(this)));
    }
    static const String& From(CFStringRef string) noexcept { return static_cast<const String&>(FromRef(string)); }

private:
    std::span<const UniChar> m_Units;
    std::unique_ptr<UniChar[]> m_Owned;
};

/// A string that owns a copy of these units.
CFStringRef CopyOf(std::span<const UniChar> units);

}  // namespace CoreFoundation
