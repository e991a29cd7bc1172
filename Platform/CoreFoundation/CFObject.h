// The objects behind the references: a kind, a count of references and a virtual destructor; and strings,
// whose units most services read.
#pragma once

#include <atomic>
#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <utility>

#include "Platform/CoreFoundation/CoreFoundation.h"

namespace Lum::Internal::CoreFoundation {

/// The kinds that callers ask for. Their numbers are the results of CFGetTypeID.
enum class Kind : CFTypeID { Other, String, Array };

/// The first base of every object: a CFTypeRef points to it.
class Object {
public:
    explicit Object(Kind kind = Kind::Other) noexcept : m_Kind(kind) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    [[nodiscard]] Kind GetKind() const noexcept { return m_Kind; }
    void Retain() const noexcept { Count(+1); }
    void Release() const noexcept {
        if (Count(-1) == 1) {
            delete this;
        }
    }

protected:
    virtual ~Object() = default;

private:
    /// Adds `change` and returns the count before that. A count that has reached the maximum stays there: the
    /// object is then never freed.
    unsigned long Count(long change) const noexcept {
        unsigned long count = m_References.load(std::memory_order_relaxed);
        while (count != std::numeric_limits<unsigned long>::max() &&
               !m_References.compare_exchange_weak(count, count + static_cast<unsigned long>(change),
                                                   std::memory_order_acq_rel, std::memory_order_relaxed)) {
        }
        return count;
    }

    mutable std::atomic<unsigned long> m_References{1};
    Kind m_Kind;
};

inline const Object& FromRef(CFTypeRef object) noexcept { return *static_cast<const Object*>(object); }

class String final : public Object {
public:
    /// Refers to units that the caller keeps.
    explicit String(std::span<const UniChar> units) noexcept : Object(Kind::String), m_Units(units) {}
    /// Takes ownership of a block, of which the first `size` units are the string.
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

}  // namespace Lum::Internal::CoreFoundation
