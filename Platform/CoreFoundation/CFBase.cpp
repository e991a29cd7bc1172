// References to objects of any kind, and arrays.
#include <cstddef>
#include <vector>

#include "Platform/CoreFoundation/CFObject.h"

using namespace Lum::Internal;

struct __CFAllocator {};  // NOLINT: the services' name

namespace {

constexpr __CFAllocator kNull;

class Array final : public CoreFoundation::Object {
public:
    explicit Array(const CFArrayCallBacks& callBacks) noexcept
        : Object(CoreFoundation::Kind::Array), m_CallBacks(callBacks) {}
    ~Array() override {
        for (const void* value : m_Values) {
            if (m_CallBacks.release != nullptr) {
                m_CallBacks.release(kCFAllocatorDefault, value);
            }
        }
    }

    [[nodiscard]] const std::vector<const void*>& Values() const noexcept { return m_Values; }
    void Append(const void* value) {
        m_Values.push_back(value);
        if (m_CallBacks.retain != nullptr) {
            m_Values.back() = m_CallBacks.retain(kCFAllocatorDefault, value);
        }
    }
    [[nodiscard]] CFMutableArrayRef Ref() noexcept {
        return static_cast<CFMutableArrayRef>(static_cast<void*>(static_cast<Object*>(this)));
    }

private:
    CFArrayCallBacks m_CallBacks;
    std::vector<const void*> m_Values;
};

const Array& From(CFArrayRef array) { return static_cast<const Array&>(CoreFoundation::FromRef(array)); }

const void* RetainObject(CFAllocatorRef /*allocator*/, const void* object) { return CFRetain(object); }
void ReleaseObject(CFAllocatorRef /*allocator*/, const void* object) { CFRelease(object); }

}  // namespace

constinit const CFAllocatorRef kCFAllocatorNull = &kNull;

CFTypeRef CFRetain(CFTypeRef object) {
    if (object != nullptr) {
        CoreFoundation::FromRef(object).Retain();
    }
    return object;
}

void CFRelease(CFTypeRef object) {
    if (object != nullptr) {
        CoreFoundation::FromRef(object).Release();
    }
}

CFTypeID CFGetTypeID(CFTypeRef object) { return static_cast<CFTypeID>(CoreFoundation::FromRef(object).GetKind()); }

constinit const CFArrayCallBacks kCFTypeArrayCallBacks = {0, RetainObject, ReleaseObject};

CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef /*allocator*/, CFIndex /*capacity*/,
                                       const CFArrayCallBacks* callBacks) {
    return (new Array(callBacks != nullptr ? *callBacks : CFArrayCallBacks{}))->Ref();
}

void CFArrayAppendValue(CFMutableArrayRef array, const void* value) {
    const_cast<Array&>(From(array)).Append(value);  // NOLINT: made by `new Array`
}

CFIndex CFArrayGetCount(CFArrayRef array) {
    return array == nullptr ? 0 : static_cast<CFIndex>(From(array).Values().size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return index >= 0 && index < CFArrayGetCount(array) ? From(array).Values()[static_cast<std::size_t>(index)]
                                                        : nullptr;
}
