// What every object of these services has: a kind, a count of references, and a destructor to be found
// by it.
#pragma once

#include <atomic>
#include <limits>

#include "Platform/CoreFoundation/CFBase.h"

namespace CoreFoundation {

/// The kinds that somebody asks for, by the numbers that CFGetTypeID gives.
enum class Kind : CFTypeID { Other, String, Array };

/// The first base of every object, so that a CFTypeRef is a pointer to it.
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
    /// Adds `change` and returns the count before it. A count that has reached its end stays there.
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

}  // namespace CoreFoundation
