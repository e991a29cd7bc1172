// Picks what searches on this processor.
#include "Source/Base/UnitSearch.h"

#include "Source/Base/TwoWay.h"
#include "Source/Base/UnitSearchPlain.h"

namespace Lum {

const unsigned short* FindUnit(const unsigned short* first, const unsigned short* last, unsigned short unit) noexcept {
    return Plain::FindUnit(first, last, unit);
}

const unsigned short* FindLastUnit(const unsigned short* first, const unsigned short* last,
                                   unsigned short unit) noexcept {
    return Plain::FindLastUnit(first, last, unit);
}

std::size_t CountMatches(const unsigned short* first, const unsigned short* last, unsigned short unit) noexcept {
    return Plain::CountMatches(first, last, unit);
}

const unsigned short* FindUnits(const unsigned short* first, const unsigned short* last, const unsigned short* needle,
                                std::size_t size) noexcept {
    if (size == 0) {
        return first;
    }
    if (size > static_cast<std::size_t>(last - first)) {
        return nullptr;
    }
    return size == 1 ? FindUnit(first, last, *needle) : TwoWay(needle, size).Find(first, last);
}

std::size_t CountUnits(const unsigned short* text) noexcept { return Plain::CountUnits(text); }

}  // namespace Lum
