// What every object of these services has: a count of references, and a destructor to be found by it.
#pragma once

#include <atomic>

#include "Platform/CoreFoundation/CFBase.h"

namespace CoreFoundation {

/// The first base of every object, so that a CFTypeRef is a pointer to it.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    void Retain() const noexcept { m_References.fetch_add(1, std::memory_order_relaxed); }
    void Release() const noexcept {
        if (m_References.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

protected:
    virtual ~Object() = default;

private:
    mutable std::atomic<unsigned long> m_References{1};
};

inline const Object& FromRef(CFTypeRef object) noexcept { return *static_cast<const Object*>(object); }

}  // namespace CoreFoundation
