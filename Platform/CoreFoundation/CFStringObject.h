// A string object as its own room and CFURL see it.
#pragma once

#include <string>
#include <utility>

#include "Platform/CoreFoundation/CFObject.h"
#include "Platform/CoreFoundation/CFString.h"

namespace CoreFoundation {

class String final : public Object {
public:
    explicit String(std::string utf8) : m_Utf8(std::move(utf8)) {}

    [[nodiscard]] const std::string& Utf8() const noexcept { return m_Utf8; }
    [[nodiscard]] CFStringRef Ref() const noexcept {
        return static_cast<CFStringRef>(static_cast<CFTypeRef>(static_cast<const Object*>(this)));
    }
    static const String& From(CFStringRef string) noexcept { return static_cast<const String&>(FromRef(string)); }

private:
    std::string m_Utf8;
};

}  // namespace CoreFoundation
